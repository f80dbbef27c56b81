#include "Tests/Command/Sgview.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Help : public SgviewTest {};

/// Words with one blank between, however they were broken into lines.
std::string inOneLine(std::string const& text)
{
    std::istringstream words(text);
    std::string line;
    for (std::string word; words >> word;)
        line += word + " ";
    return line;
}

TEST_F(Help, NamesTheCommands)
{
    std::string const help = runWell({"--help"});
    for (char const* text :
         {"Usage: sgview", "render", "info", "demo", "compare", "diagnose", "bench", "Exit status: 0"})
        EXPECT_THAT(help, HasSubstr(text));
    EXPECT_EQ(runWell({"-h"}), help);
}

TEST_F(Help, NamesTheWindowsOptions)
{
    std::string const help = runWell({"--help"});
    for (char const* text : {"FILE",
                             "--animation NAME|INDEX",
                             "--size WxH",
                             "1280x800",
                             "--technique TECHNIQUE",
                             "--module PATH",
                             "--azimuth DEGREES",
                             "--elevation DEGREES",
                             "--zoom FACTOR",
                             "--up y|z|x",
                             "--orthographic",
                             "--background #rrggbb",
                             "#dbe0e6",
                             "--colorize",
                             "--wireframe",
                             "--unlit",
                             "--mirror",
                             "--screenshot-name TEMPLATE",
                             "{model}-{date}-{time}",
                             "--list-keys",
                             "--texture-folder DIR",
                             "--memory-limit MIB",
                             "--time-limit SECONDS",
                             "--quiet",
                             "--log CHANNELS"})
        EXPECT_THAT(help, HasSubstr(text));
}

TEST_F(Help, ListsTheWindowsKeys)
{
    std::string const keys = runWell({"--list-keys"});
    for (char const* text :
         {"Files\n", "  Space               play or pause\n", "  T                   next technique\n",
          "  F5 or R             read the file again\n", "  Left drag           orbit\n"})
        EXPECT_THAT(keys, HasSubstr(text));
}

TEST_F(Help, NamesEveryOptionWithUnitAndDefault)
{
    std::map<std::string, std::vector<std::string>> const texts{
        {"render",
         {"FILE",
          "--output OUT",
          "--frames A-B",
          "--fps N",
          "default: 25",
          "--turntable N",
          "--format FORMAT",
          "--quality N",
          "default: 90",
          "--supersample N",
          "--max-size N",
          "--json",
          "--device N|list",
          "ffmpeg -i -",
          "parallel sgview render",
          "--size WxH",
          "1024x768",
          "--animation NAME|INDEX",
          "--time SECONDS",
          "--azimuth DEGREES",
          "default: 30",
          "--elevation DEGREES",
          "default: 20",
          "--zoom FACTOR",
          "--up y|z|x",
          "default: y",
          "--orthographic",
          "--background #rrggbb|transparent",
          "#ffffff",
          "--wireframe",
          "--unlit",
          "--colorize #rrggbb,#rrggbb",
          "--mirror",
          "--technique TECHNIQUE",
          "default: auto",
          "--log CHANNELS",
          "--quiet",
          "--module PATH",
          "--texture-folder DIR",
          "--memory-limit MIB",
          "default: 4096",
          "--time-limit SECONDS",
          "default: 10",
          "--version",
          "Examples:"}},
        {"info",
         {"FILE", "--gpu", "--device N|list", "--module PATH", "--json", "--animation NAME|INDEX",
          "--time SECONDS", "--texture-folder DIR", "--quiet", "--log CHANNELS", "--memory-limit MIB",
          "--time-limit SECONDS", "--version", "Examples:"}},
        {"demo",
         {"--output OUT.png", "--window", "--size WxH", "--time SECONDS", "--technique TECHNIQUE",
          "--module PATH", "--device N|list", "--quiet", "--log CHANNELS", "--version", "Examples:"}},
        {"compare",
         {"FILE",
          "--demo",
          "--output SHEET.png",
          "--json",
          "--times COUNT|SECONDS,...",
          "default: 3",
          "--animation NAME|INDEX",
          "default: the first",
          "--size WxH",
          "512x512",
          "--azimuth DEGREES",
          "--up y|z|x",
          "--orthographic",
          "--wireframe",
          "--colorize",
          "--module PATH",
          "--device N|list",
          "--quiet",
          "--version",
          "Exit status 1",
          "Examples:"}},
        {"diagnose",
         {"--force", "--report FILE.html", "--json [FILE]", "--why", "--model FILE", "--animation NAME|INDEX",
          "--times COUNT|SECONDS,...", "--texture-folder DIR", "--memory-limit MIB", "--time-limit SECONDS",
          "default: 60", "--module PATH", "--device N|list", "--quiet", "--log CHANNELS", "--version",
          "Exit status 1", "Examples:"}},
        {"bench",
         {"--scene SCENE|FILE",
          "many, textured, skinned, skinned-varied, deep",
          "default: many",
          "--count N",
          "default: 10000 of many, 2000 of textured and deep, 64 of skinned, 1 of a file",
          "--moving",
          "--animation NAME|INDEX",
          "default: the first",
          "--frames N",
          "default: 60",
          "--output PICTURE.png",
          "--json",
          "--technique TECHNIQUE",
          "default: auto",
          "--size WxH",
          "512x512",
          "--device N|list",
          "--module PATH",
          "--texture-folder DIR",
          "--memory-limit MIB",
          "--time-limit SECONDS",
          "--quiet",
          "--log CHANNELS",
          "--version",
          "Examples:"}}};
    for (auto const& [command, expected] : texts) {
        std::string const help = inOneLine(runWell({command, "--help"}));
        for (std::string const& text : expected)
            EXPECT_THAT(help, HasSubstr(text));
    }
}

TEST_F(Help, FitsATerminal)
{
    for (char const* command : {"", "render", "info", "demo", "compare", "diagnose", "bench", "help"}) {
        std::istringstream help(runWell(*command ? std::vector<std::string>{command, "--help"}
                                                 : std::vector<std::string>{"--help"}));
        for (std::string line; std::getline(help, line);)
            EXPECT_LE(line.size(), 100U) << line;
    }
}

TEST_F(Help, OfACommandByItsName)
{
    EXPECT_EQ(runWell({"help"}), runWell({"--help"}));
    for (char const* command : {"render", "info", "demo", "compare", "diagnose", "bench", "help"})
        EXPECT_EQ(runWell({"help", command}), runWell({command, "--help"}));
    expectFailure({"help", "nothing"}, 2, "there is no command nothing");
}

TEST_F(Help, VersionEverywhere)
{
    for (std::vector<std::string> const& arguments :
         std::vector<std::vector<std::string>>{{"--version"},
                                               {"-V"},
                                               {"render", "--version"},
                                               {"info", "--version"},
                                               {"demo", "--version"},
                                               {"compare", "--version"},
                                               {"diagnose", "--version"},
                                               {"bench", "--version"}})
        EXPECT_EQ(runWell(arguments), "sgview " SG_VERSION "\n");
}

} // namespace
