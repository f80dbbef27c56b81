#include "Tests/Command/Sgview.h"

#include "Viewer/Diagnosis/DiagnosticJournal.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <iterator>
#include <thread>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using sgview::DiagnosticJournal;
using sgview::JournalEntry;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class CrashGuard : public SgviewTest {
protected:
    CrashGuard() : journal(folder / "user" / "OpenGLRenderer") {}

    [[nodiscard]] Circumstances withFaults(std::string const& faults) const
    {
        Circumstances circumstances = asNewUser();
        circumstances.environment["SG_FAULTS"] = faults;
        return circumstances;
    }
    [[nodiscard]] Outcome diagnose(std::vector<std::string> const& options,
                                   std::string const& faults = {}) const
    {
        std::vector<std::string> arguments{"diagnose", "--module", FAULTY_MODULE};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run(arguments, withFaults(faults));
    }
    [[nodiscard]] Outcome draw(std::string const& faults = {}) const
    {
        return run({"demo", "--output", "a.png", "--size", "64x64", "--module", FAULTY_MODULE, "--log",
                    "opengl,error"},
                   withFaults(faults));
    }

    /// Workers of this test's user that are alive.
    [[nodiscard]] int workers() const
    {
        int found = 0;
        for (fs::directory_entry const& process : fs::directory_iterator("/proc")) {
            std::ifstream stream(process.path() / "cmdline");
            std::string const line{std::istreambuf_iterator<char>(stream), {}};
            if (line.find("--diagnostic-worker") != std::string::npos &&
                line.find(journal.file().parent_path().string()) != std::string::npos)
                ++found;
        }
        return found;
    }

    static bool comesTrue(std::function<bool()> const& condition)
    {
        for (int i = 0; i < 1000 && !condition(); ++i)
            std::this_thread::sleep_for(20ms);
        return condition();
    }

    /// A run that hangs while it times the plain technique.
    [[nodiscard]] pid_t startHanging(std::vector<std::string> const& options = {}) const
    {
        std::vector<std::string> arguments{"diagnose", "--module", FAULTY_MODULE};
        arguments.insert(arguments.end(), options.begin(), options.end());
        pid_t const process = start(arguments, withFaults("hang@finish:16"), folder);
        EXPECT_TRUE(comesTrue([&] {
            auto const entry = journal.read();
            return entry && entry->step == "timing the plain technique";
        }));
        return process;
    }

    DiagnosticJournal journal;
};

/// Where a driver fails, and how.
struct Death {
    std::string name;
    std::string fault;
    std::string end;
    std::string step;
};

void PrintTo(Death const& death, std::ostream* stream)
{
    *stream << death.name;
}

class EveryDeath : public CrashGuard, public testing::WithParamInterface<Death> {};

TEST_P(EveryDeath, IsSurvivedAndRemembered)
{
    std::string const end = GetParam().end + " while " + GetParam().step;
    Outcome const dead = diagnose({"--time-limit", "2", "--json", "a.json"}, GetParam().fault);
    EXPECT_EQ(dead.status, 1);
    EXPECT_EQ(dead.signal, 0);
    EXPECT_EQ(dead.errors, "sgview: the run " + end +
                               "; pictures are drawn by the plain technique until a run ends well\n");
    EXPECT_EQ(workers(), 0);

    std::optional<JournalEntry> const entry = journal.read();
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->step, GetParam().step);
    EXPECT_EQ(entry->end, GetParam().end);
    nlohmann::json const run = nlohmann::json::parse(contentOf("a.json"));
    EXPECT_EQ(run["outcome"]["endedWell"], false);
    EXPECT_EQ(run["outcome"]["end"], GetParam().end);
    EXPECT_EQ(run["outcome"]["step"], GetParam().step);
    EXPECT_EQ(run["verdict"], nullptr);
    EXPECT_EQ(run["journal"]["card"], run["card"]);
    EXPECT_EQ(run["journal"]["end"], GetParam().end);

    Outcome const next = draw(GetParam().fault);
    EXPECT_EQ(next.status, 0);
    EXPECT_THAT(next.errors,
                AllOf(HasSubstr("sgview: warning: drawn by the plain technique: the last run of the "
                                "graphics diagnostic " +
                                end + "; sgview diagnose --why"),
                      HasSubstr("opengl: Read caps: VBO = No, vertex program = No"),
                      Not(HasSubstr("Running graphics diagnostics"))));
    EXPECT_TRUE(fs::exists(folder / "a.png"));
}

INSTANTIATE_TEST_SUITE_P(
    Every, EveryDeath,
    testing::Values(Death{"CrashInTheFirstFrame", "crash@finish:1",
                          "was ended by signal 11 (Segmentation fault)",
                          "growing the test scene, surfaces: 1"},
                    Death{"CrashTimingBuffers", "crash@finish:21",
                          "was ended by signal 11 (Segmentation fault)", "timing buffer objects"},
                    Death{"CrashReading", "crash@read:2", "was ended by signal 11 (Segmentation fault)",
                          "reading the vertex program's picture at rest"},
                    Death{"KillTimingTheProgram", "kill@finish:32", "was ended by signal 9 (Killed)",
                          "timing the vertex program"},
                    Death{"KillBent", "kill@read:3", "was ended by signal 9 (Killed)",
                          "drawing by the vertex program, bent"},
                    Death{"ExitReading", "exit@read:4", "ended early with status 3",
                          "drawing by the plain technique, bent"},
                    Death{"ExitGrowing", "exit@finish:6", "ended early with status 3",
                          "growing the test scene, surfaces: 2"},
                    Death{"HangInTheFirstFrame", "hang@finish:1",
                          "was ended after 2 s without a sign of life",
                          "growing the test scene, surfaces: 1"},
                    Death{"HangTimingThePlain", "hang@finish:16",
                          "was ended after 2 s without a sign of life", "timing the plain technique"},
                    Death{"HangBent", "hang@read:4", "was ended after 2 s without a sign of life",
                          "drawing by the plain technique, bent"}),
    [](auto const& death) { return death.param.name; });

TEST_F(CrashGuard, SlowRunThatGivesSignsOfLifeEndsWell)
{
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(diagnose({"--time-limit", "3"},
                       "doze@finish:2,doze@finish:7,doze@finish:12,doze@finish:17,doze@finish:22")
                  .status,
              0);
    EXPECT_GT(std::chrono::steady_clock::now() - start, 4s);
    EXPECT_FALSE(journal.read());
}

TEST_F(CrashGuard, FirstDrawingSurvivesItsOwnRun)
{
    Outcome const outcome = draw("crash@read:3");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("sgview: warning: drawn by the plain technique: "));
    EXPECT_TRUE(journal.read());
}

TEST_F(CrashGuard, WhyTellsTheStepAndForceMakesGood)
{
    EXPECT_EQ(diagnose({}, "exit@read:2").status, 1);
    Outcome const why = diagnose({"--why"});
    EXPECT_EQ(why.status, 0);
    EXPECT_THAT(why.output, AllOf(HasSubstr("ended early with status 3 while reading the vertex"),
                                  HasSubstr("UTC, process "), HasSubstr("--force")));
    EXPECT_TRUE(journal.read()) << "asking changes nothing";

    for (std::vector<std::string> const& options :
         std::vector<std::vector<std::string>>{{}, {"--report", "a.html"}, {"--model", creature()}}) {
        Outcome const refused = diagnose(options);
        EXPECT_EQ(refused.status, 1);
        EXPECT_THAT(refused.errors,
                    AllOf(StartsWith("sgview: the last run on this card ended early with status 3 while"),
                          HasSubstr("--force")));
        EXPECT_EQ(refused.output, "");
    }

    EXPECT_EQ(diagnose({"--force"}).status, 0);
    EXPECT_FALSE(journal.read());
    EXPECT_THAT(draw().errors, HasSubstr("opengl: Read caps: VBO = Yes, vertex program = Yes"));
}

TEST_F(CrashGuard, LastWordsAreKept)
{
    Outcome const outcome = diagnose({"--report", "a.html", "--json", "a.json"}, "exit@read:2");
    EXPECT_THAT(outcome.output, HasSubstr("\nLast words of the run\n  driver: no hope\n"));
    EXPECT_THAT(contentOf("a.html"), HasSubstr("driver: no hope"));
    EXPECT_EQ(nlohmann::json::parse(contentOf("a.json"))["outcome"]["lastWords"][0], "driver: no hope");
}

TEST_F(CrashGuard, VerdictFromBeforeIsNotUsedAfterADeath)
{
    EXPECT_EQ(diagnose({}).status, 0);
    EXPECT_EQ(diagnose({"--force"}, "crash@finish:3").status, 1);
    EXPECT_THAT(draw().errors, AllOf(HasSubstr("warning: drawn by the plain technique"),
                                     HasSubstr("Read caps: VBO = No, vertex program = No")));
}

TEST_F(CrashGuard, AnotherCardIsMeasured)
{
    EXPECT_EQ(diagnose({}, "crash@finish:3").status, 1);
    JournalEntry entry = *journal.read();
    entry.card += " of before";
    journal.write(entry);
    EXPECT_THAT(draw().errors, HasSubstr("Running graphics diagnostics"));
    EXPECT_FALSE(journal.read()) << "gone with a run that ended well";
}

TEST_F(CrashGuard, RunThatWasCutOffIsRemembered)
{
    EXPECT_EQ(diagnose({}, "crash@finish:3").status, 1);
    JournalEntry entry = *journal.read();
    entry.end.clear(); // as after a reset of the machine
    journal.write(entry);
    EXPECT_THAT(draw().errors, AllOf(HasSubstr("was cut off while growing the test scene"),
                                     Not(HasSubstr("Running graphics"))));
    EXPECT_THAT(diagnose({"--why"}).output, HasSubstr("was cut off while"));
}

TEST_F(CrashGuard, InterruptedRunLeavesNoChildAndNoJournal)
{
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
        pid_t const process = startHanging();
        EXPECT_EQ(workers(), 1);
        ::kill(process, signal);
        EXPECT_EQ(finish(process, folder).signal, signal);
        EXPECT_EQ(workers(), 0);
        EXPECT_FALSE(journal.read());
    }
    EXPECT_THAT(draw().errors, HasSubstr("Running graphics diagnostics"));
}

TEST_F(CrashGuard, RunThatIsInterruptedForHangingIsRemembered)
{
    pid_t const process = startHanging();
    std::this_thread::sleep_for(6s);
    ::kill(process, SIGINT);
    EXPECT_EQ(finish(process, folder).signal, SIGINT);
    EXPECT_EQ(workers(), 0);
    ASSERT_TRUE(journal.read());
    EXPECT_EQ(journal.read()->end, "was interrupted");
}

TEST_F(CrashGuard, KilledSgviewTakesItsChildAlong)
{
    pid_t const process = startHanging();
    EXPECT_TRUE(journal.isHeld());
    ::kill(process, SIGKILL);
    EXPECT_EQ(finish(process, folder).signal, SIGKILL);
    EXPECT_TRUE(comesTrue([&] { return workers() == 0; }));
    EXPECT_FALSE(journal.isHeld());
    EXPECT_THAT(draw().errors, HasSubstr("was cut off while timing the plain technique"));
}

TEST_F(CrashGuard, WhoWaitedForARunThatDiedDrawsPlainly)
{
    pid_t const process = startHanging({"--time-limit", "3"});
    Outcome const outcome = draw();
    EXPECT_THAT(outcome.errors, AllOf(HasSubstr("was ended after 3 s without a sign of life"),
                                      Not(HasSubstr("Running graphics"))));
    EXPECT_EQ(finish(process, folder).status, 1);
}

TEST_F(CrashGuard, WhoWaitedForASgviewThatWasKilledDrawsPlainly)
{
    fs::create_directory(folder / "waiting");
    pid_t const process = startHanging();
    pid_t const waiting = start({"demo", "--output", "a.png", "--size", "64x64", "--module", FAULTY_MODULE},
                                withFaults(""), folder / "waiting");
    std::this_thread::sleep_for(2s);
    ::kill(process, SIGKILL);
    EXPECT_THAT(finish(waiting, folder / "waiting").errors,
                HasSubstr("was cut off while timing the plain technique"));
    EXPECT_EQ(finish(process, folder).signal, SIGKILL);
}

TEST_F(CrashGuard, RunOfAnotherDoesNotKeepFromAVerdictThatHolds)
{
    EXPECT_EQ(diagnose({}).status, 0);
    pid_t const process = startHanging({"--force"});
    Outcome const outcome = draw();
    EXPECT_THAT(outcome.errors,
                AllOf(HasSubstr("Read caps: VBO = Yes, vertex program = Yes"), Not(HasSubstr("warning"))));
    ::kill(process, SIGKILL);
    EXPECT_EQ(finish(process, folder).signal, SIGKILL);
}

} // namespace
