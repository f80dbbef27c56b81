#include "Tests/Command/OtherCard.h"
#include "Tests/Command/Sgview.h"

#include "Viewer/Diagnosis/DiagnosticJournal.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <regex>

namespace {

using nlohmann::json;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr int failed = 1;
constexpr int badUsage = 2;

std::size_t count(std::string const& text, std::string const& part)
{
    std::size_t found = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++found;
    return found;
}

/// On one line, blanks alone between words.
std::string unwrapped(std::string const& text)
{
    return std::regex_replace(text, std::regex("\\s+"), " ");
}

class DiagnoseCommand : public SgviewTest {
protected:
    [[nodiscard]] Circumstances withFaults(std::string const& faults = {}) const
    {
        Circumstances circumstances = asNewUser();
        circumstances.environment["SG_FAULTS"] = faults;
        return circumstances;
    }

    /// On the driver that fails as it is told to.
    [[nodiscard]] Outcome diagnose(std::vector<std::string> const& options,
                                   Circumstances const& circumstances) const
    {
        std::vector<std::string> arguments{"diagnose", "--module", FAULTY_MODULE};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run(arguments, circumstances);
    }

    [[nodiscard]] std::string preferences() const { return contentOf("user/OpenGLRenderer/preferences"); }
};

TEST_F(DiagnoseCommand, RealDriverGetsAVerdict)
{
    Outcome const outcome = run({"diagnose"}, asNewUser());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(outcome.output,
                AllOf(StartsWith("Graphics card\n  in use"), HasSubstr("offers"),
                      ContainsRegex("measured with +[0-9]+ surface"), HasSubstr("\nFrames per second\n"),
                      ContainsRegex("\n  plain +[0-9.,]+  #+\n"), HasSubstr("\nVerdict\n  buffer objects"),
                      ContainsRegex("sgview draws by technique [a-z+]+\\.\n$")));
    EXPECT_THAT(preferences(), HasSubstr("GL_VertexShader = False"));
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(folder / "user" / "OpenGLRenderer"))
        names.push_back(entry.path().filename());
    EXPECT_THAT(names,
                testing::UnorderedElementsAre("preferences", "preferences.lock", "diagnostic-journal.lock"));
}

TEST_F(DiagnoseCommand, SummaryFitsATerminal)
{
    Outcome const outcome = diagnose({}, withFaults());
    std::size_t longest = 0;
    std::istringstream lines(outcome.output);
    for (std::string line; std::getline(lines, line);)
        longest = std::max(longest, line.size());
    EXPECT_LE(longest, 80U);
    EXPECT_THAT(
        outcome.output,
        AllOf(HasSubstr("measured with       4 surfaces of 10,000 vertices"),
              ContainsRegex("\n  plain +50\\.00  #+\n"), ContainsRegex("\n  buffer objects +66\\.67  #+\n"),
              ContainsRegex("\n  skinned by the vertex program +100\\.0  #+\n"),
              ContainsRegex("vertex program, bent \\| plain, at rest +[0-9.]+%  1% or more wanted: good"),
              HasSubstr("sgview draws by technique program+vbo.\n")));
}

TEST_F(DiagnoseCommand, VerdictThatHoldsIsNotMeasuredAnew)
{
    EXPECT_EQ(diagnose({}, withFaults()).status, 0);
    std::string const stored = preferences();
    Outcome const again = diagnose({"--log", "opengl"}, withFaults());
    EXPECT_EQ(again.status, 0);
    EXPECT_THAT(again.errors, Not(HasSubstr("Running graphics diagnostics")));
    EXPECT_THAT(again.output, AllOf(StartsWith("Stored verdict\n  card"),
                                    ContainsRegex("\n  vertex program +on\n"), HasSubstr("--force")));
    EXPECT_THAT(diagnose({"--force", "--log", "opengl"}, withFaults()).errors,
                HasSubstr("opengl: Running graphics diagnostics\n"));
    EXPECT_EQ(preferences(), stored);
}

TEST_F(DiagnoseCommand, FirstDrawingMeasuresAndTheSecondReads)
{
    std::vector<std::string> const drawing{"demo",     "--output",    "a.png", "--size", "64x64",
                                           "--module", FAULTY_MODULE, "--log", "opengl"};
    Outcome const first = run(drawing, withFaults());
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(count(first.errors, "Running graphics diagnostics"), 1U);
    EXPECT_THAT(first.errors, AllOf(HasSubstr("opengl: vertex program is faster: enabling\n"),
                                    HasSubstr("opengl: Read caps: VBO = Yes, vertex program = Yes")));
    Outcome const second = run(drawing, withFaults());
    EXPECT_THAT(second.errors, AllOf(Not(HasSubstr("Running graphics diagnostics")),
                                     HasSubstr("opengl: Read caps: VBO = Yes, vertex program = Yes")));
    std::vector<std::string> named = drawing;
    named.insert(named.end(), {"--technique", "vbo"});
    std::filesystem::remove_all(folder / "user");
    EXPECT_THAT(run(named, withFaults()).errors, Not(HasSubstr("Running graphics diagnostics")));
    EXPECT_FALSE(std::filesystem::exists(folder / "user"));
}

TEST_F(DiagnoseCommand, TwoAtOnceMeasureOnce)
{
    std::vector<std::string> const drawing{"demo",     "--output",    "a.png", "--size", "64x64",
                                           "--module", FAULTY_MODULE, "--log", "opengl"};
    std::filesystem::create_directories(folder / "one");
    std::filesystem::create_directories(folder / "two");
    pid_t const one = start(drawing, withFaults(), folder / "one");
    pid_t const two = start(drawing, withFaults(), folder / "two");
    Outcome const first = finish(one, folder / "one");
    Outcome const second = finish(two, folder / "two");
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(count(first.errors + second.errors, "Running graphics diagnostics"), 1U);
    EXPECT_EQ(count(first.errors + second.errors, "opengl: Read caps: VBO = Yes, vertex program = Yes"), 2U);
}

TEST_F(DiagnoseCommand, WithoutAFolderTheVerdictIsForTheProcess)
{
    Circumstances homeless = withFaults();
    homeless.environment["XDG_CONFIG_HOME"] = std::nullopt;
    homeless.environment["HOME"] = std::nullopt;
    Outcome const outcome =
        run({"demo", "--output", "a.png", "--size", "64x64", "--module", FAULTY_MODULE, "--log", "opengl"},
            homeless);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("opengl: Read caps: VBO = Yes, vertex program = Yes"));
    EXPECT_EQ(diagnose({}, homeless).status, 0);
    EXPECT_EQ(diagnose({"--why"}, homeless).status, 0);
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{"a.png"});
}

TEST_F(DiagnoseCommand, FolderThatCannotBeWritten)
{
    std::filesystem::create_directories(folder / "user");
    std::filesystem::permissions(folder / "user",
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    Circumstances anybody = withFaults();
    anybody.asAnybody = true;
    Outcome const outcome =
        run({"demo", "--output", "a.png", "--size", "64x64", "--module", FAULTY_MODULE}, anybody);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, StartsWith("error: Preferences not saved: "));
    EXPECT_EQ(count(outcome.errors, "\n"), 1U);
    EXPECT_EQ(diagnose({"--quiet"}, anybody).errors, "");
    std::filesystem::permissions(folder / "user", std::filesystem::perms::owner_all);
}

TEST_F(DiagnoseCommand, JsonHoldsAll)
{
    EXPECT_EQ(diagnose({}, withFaults()).status, 0);
    Outcome const outcome = diagnose({"--json", "a.json"}, withFaults("noise@finish:1"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "") << "the driver's own words stay out of it";
    json const run = json::parse(contentOf("a.json"));
    EXPECT_THAT(run["card"], HasSubstr(" / "));
    EXPECT_EQ(run["outcome"],
              json({{"endedWell", true}, {"end", ""}, {"step", nullptr}, {"lastWords", json::array()}}));
    EXPECT_EQ(run["claims"], json({{"vbo", true}, {"vertexProgram", true}, {"vertexShader", false}}));
    EXPECT_EQ(run["verdict"], run["claims"]);
    EXPECT_EQ(run["surfaces"], 4);
    ASSERT_EQ(run["timeTests"].size(), 7U);
    EXPECT_EQ(run["timeTests"][6],
              json({{"step", "program"}, {"surfaces", 4}, {"framesPerSecond", 100.0}, {"bailedOut", false}}));
    ASSERT_EQ(run["pictures"].size(), 4U);
    EXPECT_EQ(run["pictures"][0]["view"], "reference");
    EXPECT_EQ(run["pictures"][0]["white"], run["referencePixels"]["white"]);
    EXPECT_EQ(run["pictures"][3]["view"], "programCheck");
    EXPECT_EQ(run["pictures"][3]["white"].get<int>() + run["pictures"][3]["nonWhite"].get<int>(), 512 * 512);
    ASSERT_EQ(run["comparisons"].size(), 3U);
    EXPECT_EQ(run["comparisons"][1]["mustDiffer"], true);
    EXPECT_EQ(run["rulings"].size(), 3U);
    EXPECT_EQ(run["rulings"][1]["flag"], "vertexProgram");
    EXPECT_GT(run["limits"]["GL_MAX_PROGRAM_INSTRUCTIONS_ARB"], 0);
    EXPECT_GT(run["log"].size(), 20U);
    EXPECT_EQ(run["journal"], nullptr);
}

TEST_F(DiagnoseCommand, ReportIsOnePage)
{
    Outcome const outcome = diagnose({"--report", "card.html"}, withFaults());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(contentOf("card.html"),
                AllOf(HasSubstr("<html"), HasSubstr("data:image/png;base64,"), HasSubstr("</html>")));
}

TEST_F(DiagnoseCommand, OnStandardOutputThereIsNothingElse)
{
    for (std::vector<std::string> const& written :
         std::vector<std::vector<std::string>>{{"--json", "-"}, {"--json"}, {"--json", "--quiet"}}) {
        Outcome const outcome = diagnose(written, withFaults());
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(json::accept(outcome.output)) << written.back();
    }
    std::string const page = diagnose({"--report", "-", "--json", "a.json"}, withFaults()).output;
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>"));
    EXPECT_TRUE(page.ends_with("</html>\n")) << page.substr(page.size() - 100);
    EXPECT_TRUE(json::accept(contentOf("a.json")));
    EXPECT_EQ(diagnose({"--json=b.json"}, withFaults()).output,
              diagnose({"--json", "c.json"}, withFaults()).output);
    EXPECT_TRUE(json::accept(contentOf("b.json")));
    EXPECT_FALSE(std::filesystem::exists(folder / "-"));
}

TEST_F(DiagnoseCommand, WhyNamesTheRule)
{
    auto const why = [&](std::string const& text) {
        if (!text.empty()) {
            std::filesystem::create_directories(folder / "user" / "OpenGLRenderer");
            writeFile("user/OpenGLRenderer/preferences", text);
        }
        Outcome const outcome = diagnose({"--why"}, withFaults());
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.errors, "");
        return unwrapped(outcome.output);
    };
    EXPECT_THAT(why({}), AllOf(HasSubstr("offers buffer objects, vertex program"),
                               HasSubstr("Stored verdict none A new"),
                               HasSubstr("A new run is needed card missing entry: no verdict is stored"),
                               HasSubstr("none that ended badly")));
    EXPECT_FALSE(std::filesystem::exists(folder / "user")) << "asking writes nothing";
    EXPECT_THAT(why("GL_CARD = old card\n"), HasSubstr("another card: the verdict is for 'old card'"));
    EXPECT_EQ(diagnose({"--force"}, withFaults()).status, 0);
    std::string const good = preferences();
    EXPECT_THAT(why(good),
                AllOf(HasSubstr("No new run is needed: all fits"), HasSubstr("vertex shader off No new run"),
                      HasSubstr("vertex shader fits: never tried, as the diagnostic leaves it out"),
                      Not(HasSubstr("True")), Not(HasSubstr("False"))));
    auto const with = [&](std::string const& from, std::string const& to) {
        return std::regex_replace(good, std::regex(from), to);
    };
    EXPECT_THAT(why(with("GL_VBO = True\n", "")), HasSubstr("missing entry: the card offers it"));
    EXPECT_THAT(why(with("GL_VBO = True", "GL_VBO = yes")), HasSubstr("neither spelling: 'yes'"));
    EXPECT_THAT(why(with("GL_VertexShader = False", "GL_VertexShader = True")),
                HasSubstr("vertex shader claims more than a run grants: the verdict says on; never tried"));
    EXPECT_EQ(preferences(), with("GL_VertexShader = False", "GL_VertexShader = True"));
}

TEST_F(DiagnoseCommand, UsageErrors)
{
    expectFailure({"diagnose", "--why", "--force"}, badUsage, "--force excludes --why");
    expectFailure({"diagnose", "--why", "--json", "a"}, badUsage, "--why excludes --json");
    expectFailure({"diagnose", "--why", "--time-limit", "5"}, badUsage, "--why excludes --time-limit");
    expectFailure({"diagnose", "--model", "a.glb", "--report", "a"}, badUsage, "--report excludes --model");
    expectFailure({"diagnose", "--animation", "0"}, badUsage, "--animation requires --model");
    expectFailure({"diagnose", "--times", "1"}, badUsage, "--times requires --model");
    expectFailure({"diagnose", "--report", ""}, badUsage, "--report: no file is named");
    expectFailure({"diagnose", "--report", "-", "--json", "/dev/stdout"}, badUsage,
                  "--json: standard output takes the report already");
    expectFailure({"diagnose", "a.glb"}, badUsage, "unexpected argument a.glb; see sgview diagnose --help");
    expectFailure({"diagnose", "--report", "-", "--json"}, badUsage,
                  "--json: standard output takes the report already");
    expectFailure({"diagnose", "--json", "a.json", "b.json"}, badUsage,
                  "unexpected argument b.json; see sgview diagnose --help");
    for (char const* limit : {"0", "-1", "1.5", "86401"})
        expectFailure({"diagnose", "--time-limit", limit}, badUsage,
                      "--time-limit: '" + std::string(limit) + "' is not a whole number from 1 to 86400");
}

TEST_F(DiagnoseCommand, OutputsThatCannotBeWritten)
{
    Outcome outcome = diagnose({"--json", "no/a.json"}, withFaults());
    EXPECT_EQ(outcome.status, failed);
    EXPECT_EQ(outcome.errors, "sgview: no/a.json: there is no such folder\n");
    EXPECT_EQ(diagnose({"--report", "/dev/full"}, withFaults()).errors,
              "sgview: /dev/full: No space left on device\n");
    Circumstances full = withFaults();
    full.output = "/dev/full";
    for (std::vector<std::string> const& options :
         std::vector<std::vector<std::string>>{{}, {"--force"}, {"--why"}, {"--model", creature()}}) {
        outcome = diagnose(options, full);
        EXPECT_EQ(outcome.status, failed);
        EXPECT_EQ(outcome.errors, "sgview: standard output cannot be written\n");
    }
}

TEST_F(DiagnoseCommand, NoModule)
{
    Outcome const outcome = run({"diagnose", "--module", WRONG_MODULES "/RegistersNothing.so"}, asNewUser());
    EXPECT_EQ(outcome.status, failed);
    EXPECT_THAT(outcome.errors, HasSubstr("the module registers no renderer\n"));
}

/// What a bad driver makes of a run.
struct BadDriver {
    std::string name;
    std::string faults;
    std::string line;   ///< of the log
    std::string stored; ///< flags: buffers, program
    std::string reason; ///< in the summary
    bool isLying = false;
};

void PrintTo(BadDriver const& driver, std::ostream* stream)
{
    *stream << driver.name;
}

class OnBadDriver : public DiagnoseCommand, public testing::WithParamInterface<BadDriver> {};

TEST_P(OnBadDriver, GetsTheRightVerdict)
{
    Circumstances circumstances = withFaults(GetParam().faults);
    if (GetParam().isLying)
        circumstances.environment.merge(environmentOfOtherCard("lying"));
    Outcome const outcome = diagnose({"--log", "opengl"}, circumstances);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("opengl: " + GetParam().line + "\n"));
    EXPECT_THAT(unwrapped(outcome.output), HasSubstr(GetParam().reason));
    bool const buffers = GetParam().stored[0] == 'y';
    bool const program = GetParam().stored[1] == 'y';
    EXPECT_THAT(preferences(),
                AllOf(HasSubstr(std::string("GL_VBO = ") + (buffers ? "True" : "False")),
                      HasSubstr(std::string("GL_VertexProgram = ") + (program ? "True" : "False")),
                      HasSubstr("GL_VertexShader = False"), HasSubstr("GL_CARD = ")));
    EXPECT_FALSE(std::filesystem::exists(folder / "user/OpenGLRenderer/diagnostic-journal"));
}

INSTANTIATE_TEST_SUITE_P(
    Every, OnBadDriver,
    testing::Values(
        BadDriver{"None", "", "vertex program is faster: enabling", "yy", "on, not slower, and its pictures"},
        BadDriver{"BuffersSlow", "slow@buffers", "VBO is slower -- reverting", "ny", "off, slower: 25.00"},
        BadDriver{"BuffersStall", "stall@buffers",
                  "Ran time test, but first render took too long, so bailing out", "ny",
                  "off, the first frame took more than a second"},
        BadDriver{"ProgramSlow", "slow@program", "Bad vertex program performance--disabling", "yn",
                  "off, slower: 25.00"},
        BadDriver{"ProgramStalls", "stall@program", "Bad vertex program performance--disabling", "yn",
                  "off, the first frame took more than a second"},
        BadDriver{"ReadsBlack", "black@read",
                  "Could not read image correctly--disabling vertex program and VBO", "nn",
                  "0 white pixels and 262,144 others"},
        BadDriver{"ReadsWhite", "white@read",
                  "Could not read image correctly--disabling vertex program and VBO", "nn",
                  "262,144 white pixels and 0 others"},
        BadDriver{"ProgramDrawsNothing", "white@read:2", "Images differ--disabling vertex program", "yn",
                  "its picture at rest is wrong"},
        BadDriver{"ProgramBendsWrong", "shift@read:3", "Second images differ--disabling vertex program", "yn",
                  "its picture with bent bones is wrong"},
        BadDriver{"ProgramDoesNotBend", "repeat@read:3",
                  "Images that should differ are the same--disabling everything", "nn",
                  "bones that bend hardly change the picture"},
        BadDriver{"PlainBendsWrong", "white@read:4", "Second images differ--disabling vertex program", "yn",
                  "its picture with bent bones is wrong"},
        BadDriver{"NoNativeInstructions", "none@program", "GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB = 0", "yn",
                  "it has 0 native instructions"},
        BadDriver{"LyingCard", "", "possibly lying ATI card detected--disabling vertex program", "yn",
                  "claims them and gets them wrong", true}),
    [](auto const& driver) { return driver.param.name; });

} // namespace
