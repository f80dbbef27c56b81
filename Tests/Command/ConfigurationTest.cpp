#include "Tests/Command/Sgview.h"

#include <gmock/gmock.h>

#include <array>
#include <regex>
#include <sstream>

#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Configuration : public SgviewTest {
protected:
    Configuration()
    {
        useOwnConfiguration();
        fs::create_directories(folder / "config/sgview");
    }

    void configure(std::string const& text) const { writeFile("config/sgview/config", text); }

    /// What holds, as sgview says.
    [[nodiscard]] std::string printed(std::vector<std::string> arguments = {}) const
    {
        arguments.emplace_back("--print-config");
        return runWell(arguments);
    }

    [[nodiscard]] std::string sectionOf(std::string const& name, std::string const& text) const
    {
        std::size_t const start = text.find("\n[" + name + "]\n");
        return start == std::string::npos ? "" : text.substr(start, text.find("\n[", start + 1) - start);
    }

    /// Width and height of a PNG that is drawn with these arguments.
    [[nodiscard]] std::string sizeOf(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), creature());
        std::string const png = render("a.png", arguments);
        auto const number = [&png](std::size_t at) {
            return std::to_string(static_cast<unsigned char>(png.at(at + 2)) * 256 +
                                  static_cast<unsigned char>(png.at(at + 3)));
        };
        return number(16) + "x" + number(20);
    }

    void expectBroken(std::string const& text, std::string const& reason) const
    {
        configure(text);
        expectFailure({"info", creature()}, 2, (folder / "config/sgview/config").string() + reason);
    }
};

TEST_F(Configuration, CommandLineThenSectionThenAllThenDefault)
{
    EXPECT_EQ(sizeOf({"--max-size", "64"}), "64x48");
    configure("size = 80x60\n[render]\nsize = 100x50\n[demo]\nsize = 30x30\n");
    EXPECT_EQ(sizeOf({}), "100x50");
    EXPECT_EQ(sizeOf({"--size", "40x20"}), "40x20");
    EXPECT_EQ(sizeOf({"-s", "40x20"}), "40x20");
    EXPECT_EQ(sizeOf({"--no-config", "--max-size", "64"}), "64x48");
    configure("size = 80x60\n");
    EXPECT_EQ(sizeOf({}), "80x60");
    writeFile("other", "size = '90x70'");
    EXPECT_EQ(sizeOf({"--config", "other"}), "90x70");
}

TEST_F(Configuration, SetsWhatTheOptionSets)
{
    std::vector<std::string> const arguments{creature(), "--size", "64x48"};
    std::string const usual = render("a.png", arguments);
    configure("[render]\nwireframe = true\nbackground = \"#204060\" # a comment\n\n\tazimuth = -45\r\n"
              "up = z\northographic = true\n");
    std::string const configured = render("a.png", arguments);
    EXPECT_NE(configured, usual);
    std::vector<std::string> typed = arguments;
    typed.insert(typed.end(),
                 {"--no-config", "-w", "-b", "#204060", "--azimuth", "-45", "--up", "z", "--orthographic"});
    EXPECT_EQ(render("a.png", typed), configured);
    typed = arguments;
    typed.insert(typed.end(), {"--wireframe=false", "-b", "#ffffff", "--azimuth", "30", "--up", "y",
                               "--orthographic=false"});
    EXPECT_EQ(render("a.png", typed), usual);
}

TEST_F(Configuration, OneCommandsMessagesAreNotAnothers)
{
    configure("[demo]\nlog = nonsense\n");
    EXPECT_THAT(run({"info", creature()}).errors, HasSubstr("config:2: --log: 'nonsense'"));
    configure("[info]\nquiet = true\njson = true\n");
    EXPECT_THAT(runWell({"info", creature()}), StartsWith("{"));
    std::string const what = printed();
    EXPECT_THAT(sectionOf("info", what), HasSubstr("\nquiet = true\n"));
    EXPECT_THAT(sectionOf("render", what), HasSubstr("\n#quiet = false\n"));
}

TEST_F(Configuration, LeavesOutWhatDoesNotGoTogetherWithTheCommandLine)
{
    configure("quiet = true\n[info]\nmodule = /nowhere\nmemory-limit = 900\n[compare]\nwireframe = true\n");
    EXPECT_NE(runWell({"info", creature(), "--log", "opengl"}), "");
    EXPECT_NE(runWell({"info", creature()}), "");
    Outcome const graphics = run({"info", "--gpu"});
    EXPECT_THAT(graphics.errors, HasSubstr("/nowhere"));
}

TEST_F(Configuration, Lists)
{
    configure("[info]\ntexture-folder = ['one', \"tw\\\"o\\\\\"]\n[window]\ntexture-folder = []\n");
    EXPECT_THAT(sectionOf("info", printed()),
                HasSubstr("\ntexture-folder = [\"" + (folder / "config/sgview/one").string() + "\", \"" +
                          (folder / "config/sgview/tw").string() + "\\\"o\\\\\"]\n"));
}

TEST_F(Configuration, PathsStartFromTheFilesFolder)
{
    fs::create_directories(folder / "settings/sub");
    writeFile("settings/all", "[info]\nmodule = ../none.so\ntexture-folder = [sub, '/else/where']\n"
                              "[render]\nmodule = /absolute.so\n[compare]\nmodule = ''\n");
    std::string const what = run({"--print-config", "--config", "settings/all"}).errors;
    EXPECT_EQ(what, "sgview: settings/all:7: --module: no file is named\n");

    writeFile("settings/all", "[info]\nmodule = ../none.so\ntexture-folder = [sub, '/else/where']\n"
                              "[render]\nmodule = /absolute.so\n");
    std::string const printed = runWell({"--print-config", "--config", "settings/all"});
    EXPECT_THAT(sectionOf("info", printed),
                AllOf(HasSubstr("\nmodule = \"" + (folder / "none.so").string() + "\"\n"),
                      HasSubstr("= [\"" + (folder / "settings/sub").string() + "\", \"/else/where\"]\n")));
    EXPECT_THAT(sectionOf("render", printed), HasSubstr("\nmodule = \"/absolute.so\"\n"));
    EXPECT_THAT(run({"info", "--gpu", "--config", "settings/all"}).errors,
                HasSubstr("tried " + (folder / "none.so").string() + ":"));
}

TEST_F(Configuration, PrintedIsLoadableAgain)
{
    configure("technique = vbo\n[window]\nscreenshot-name = \"a \\\\ \\\"b\\\" # c\"\nunlit = true\n"
              "[render]\ntexture-folder = [a, 'b c']\nquiet = false\n[compare]\nwireframe = true\n");
    std::string const what = printed({"--size", "300x200", "--azimuth=12"});
    EXPECT_THAT(sectionOf("window", what), HasSubstr("\nsize = \"300x200\"\n"));
    EXPECT_THAT(sectionOf("window", what), HasSubstr("\nscreenshot-name = \"a \\\\ \\\"b\\\" # c\"\n"));
    EXPECT_THAT(sectionOf("window", what), HasSubstr("\nazimuth = \"12\"\n"));
    EXPECT_THAT(sectionOf("render", what), HasSubstr("\ntechnique = \"vbo\"\n"));
    EXPECT_THAT(sectionOf("render", what), HasSubstr("/config/sgview/b c\"]\n"));
    EXPECT_THAT(sectionOf("render", what), HasSubstr("\n# Size of the picture, pixels (default: 1024x768)\n"
                                                     "#size = \"1024x768\"\n"));
    EXPECT_THAT(what, Not(HasSubstr("\n#output")));
    writeFile("again", what);
    EXPECT_EQ(printed({"--config", "again"}), what);
    EXPECT_NE(runWell({"--no-config", "--print-config"}), what);

    configure("[info]\nmodule = /elsewhere\n[diagnose]\nmemory-limit = 900\n");
    EXPECT_THAT(sectionOf("info", printed()), HasSubstr("\nmodule = \"/elsewhere\"\n")) << "with --gpu alone";
    EXPECT_THAT(sectionOf("diagnose", printed()), HasSubstr("\nmemory-limit = \"900\"\n"));
}

TEST_F(Configuration, EveryPrintedDefaultCanBeSet)
{
    std::string all;
    std::istringstream lines(printed());
    std::regex const valueDefault("#([a-z-]+ = (\"[^A-Z#]*[0-9a-z}]\"|\"#[0-9a-f]{6}\"|false))");
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        bool const isDefault = std::regex_match(line, match, valueDefault);
        count += isDefault ? 1 : 0;
        all += (isDefault ? match[1].str() : line) + "\n";
    }
    EXPECT_GT(count, 40U);
    writeFile("all", all);
    for (char const* command : {"info", "compare", "diagnose", "bench"})
        EXPECT_EQ(run({command, "--config", "all"}).errors.find("all:"), std::string::npos) << command;
    EXPECT_EQ(sizeOf({"--config", "all"}), "1024x768");
}

TEST_F(Configuration, Broken)
{
    expectBroken("\nsize\n", ":2: = is missing after size");
    expectBroken("# fine\nsize = \n", ":2: a value is missing");
    expectBroken("size = 'a\n", ":1: the quote at the end is missing");
    expectBroken("size = \"a\\n\"\n", ":1: a backslash stands before a quote or another one");
    expectBroken("size = 10x10 20x20\n", ":1: '20x20' is too much");
    expectBroken("[render\n", ":1: ] is missing");
    expectBroken("[]\n", ":1: the section has no name");
    expectBroken("= 3\n", ":1: neither name = value nor [section]");
    expectBroken("texture-folder = [a b]\n", ":1: ] is missing");
    expectBroken("[render]\nsize = 10x10\n[demo]\nsize = 10x10\n[render]\nsize = 20x20\n",
                 ":6: size is set in line 2 already");
    expectBroken("[redner]\nsize = 10x10\n", ":1: there is no command redner");
    expectBroken("[render]\ncolour = red\n", ":2: render has no option colour that can be set here");
    expectBroken("output = a.png\n", ":1: no command has an option output that can be set here");
    expectBroken("[render]\nsize = tall\n",
                 ":2: --size: 'tall' is not a picture size: width x height in pixels, 1 to 65536 each and "
                 "268435456 in all, as in 1024x768");
    expectBroken("wireframe = maybe\n", ":1: wireframe is true or false");
    expectBroken("size = [10x10]\n", ":1: size takes no list");
    expectBroken("[render]\ndevice = list\n", ":2: device: list is for the command line alone");
}

TEST_F(Configuration, NobodyWaitsForAPipeThatIsNotAskedFor)
{
    std::string const file = (folder / "config/sgview/config").string();
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    expectFailure({"info", creature()}, 2, file + ": a pipe, not a file");
    EXPECT_THAT(runWell({"info", creature(), "--no-config", "--json"}), StartsWith("{"));
}

TEST_F(Configuration, APipeThatIsAskedForIsRead)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    std::string const text = "[info]\njson = true\n";
    ASSERT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    ::close(ends[1]);
    EXPECT_THAT(runWell({"info", creature(), "--config", "/dev/fd/" + std::to_string(ends[0])}),
                StartsWith("{"));
    ::close(ends[0]);
}

TEST_F(Configuration, FilesThatCannotBeRead)
{
    expectFailure({"info", creature(), "--config", "nowhere"}, 2, "nowhere: there is no such file");
    expectFailure({"info", creature(), "--config", "."}, 2, ".: Is a directory");
    expectFailure({"info", creature(), "--config", ""}, 2, "--config: no file is named");
    expectFailure({"info", creature(), "--config", "/dev/zero"}, 2,
                  "/dev/zero: too long for a configuration file");
    expectFailure({"info", creature(), "--config", "a", "--no-config"}, 2, "--config excludes --no-config");
    configure("");
    fs::permissions(folder / "config/sgview/config", fs::perms::none);
    Circumstances anybody;
    anybody.asAnybody = true;
    expectFailure({"info", creature()}, 2, (folder / "config/sgview/config").string() + ": Permission denied",
                  anybody);
}

TEST_F(Configuration, BrokenOnesKeepNobodyFromHelp)
{
    configure("broken");
    for (std::vector<std::string> const& arguments :
         std::vector<std::vector<std::string>>{{"--help"},
                                               {"render", "-h"},
                                               {"help", "render"},
                                               {"-V"},
                                               {"--list-keys"},
                                               {"--print-man"},
                                               {"--print-completion", "bash"}})
        EXPECT_NE(runWell(arguments), "");
}

TEST_F(Configuration, OfEveryCommand)
{
    writeFile("other", "broken");
    for (std::vector<std::string> const& arguments : std::vector<std::vector<std::string>>{
             {"render", creature(), "--output", "a.png", "--config", "other"},
             {"info", creature(), "--config", "other"},
             {"demo", "--output", "a.png", "--config", "other"},
             {"compare", "--demo", "--config", "other"},
             {"diagnose", "--config", "other"},
             {"bench", "--config", "other"},
             {"--print-config", "--config", "other"}})
        expectFailure(arguments, 2, "other:1: = is missing after broken");
    configure("broken");
    for (std::vector<std::string> const& arguments :
         std::vector<std::vector<std::string>>{{"render", creature(), "--output", "a.png", "--no-config"},
                                               {"info", creature(), "--no-config"},
                                               {"demo", "--output", "a.png", "--no-config"},
                                               {"compare", "--demo", "--size", "32x32", "--no-config"},
                                               {"diagnose", "--why", "--no-config"},
                                               {"--print-config", "--no-config"}})
        EXPECT_EQ(run(arguments).status, 0) << arguments.front();
}

TEST_F(Configuration, ImportsReadNone)
{
    configure("broken");
    EXPECT_EQ(sizeOf({"--no-config", "--size", "64x48"}), "64x48");
}

TEST_F(Configuration, NoFolderForOne)
{
    Circumstances homeless;
    homeless.environment = {{"XDG_CONFIG_HOME", std::nullopt}, {"HOME", std::nullopt}};
    EXPECT_EQ(run({"info", creature()}, homeless).status, 0);
    homeless.environment["HOME"] = (folder / "home").string();
    fs::create_directories(folder / "home/.config/sgview");
    writeFile("home/.config/sgview/config", "[info]\njson = true");
    EXPECT_THAT(run({"info", creature()}, homeless).output, StartsWith("{"));
}

} // namespace
