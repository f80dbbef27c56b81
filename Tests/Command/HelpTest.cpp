#include "Tests/Command/Sgview.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Help : public SgviewTest {};

TEST_F(Help, NamesTheCommands)
{
    std::string const help = runWell({"--help"});
    for (char const* text : {"Usage: sgview", "render", "info", "demo", "compare", "Exit status: 0"})
        EXPECT_THAT(help, HasSubstr(text));
    EXPECT_EQ(runWell({"-h"}), help);
}

TEST_F(Help, NamesEveryOptionWithUnitAndDefault)
{
    std::map<std::string, std::vector<std::string>> const texts{
        {"render",
         {"FILE",
          "--output OUT.png",
          "--size WxH",
          "1024x768",
          "--animation NAME|INDEX",
          "--time SECONDS",
          "--azimuth DEGREES",
          "default: 30",
          "--elevation DEGREES",
          "default: 20",
          "--zoom FACTOR",
          "--background #rrggbb",
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
          "default: 1024",
          "--time-limit SECONDS",
          "default: 10",
          "--version",
          "Examples:"}},
        {"info",
         {"FILE", "--json", "--animation NAME|INDEX", "--time SECONDS", "--texture-folder DIR", "--quiet",
          "--log CHANNELS", "--memory-limit MIB", "--time-limit SECONDS", "--version", "Examples:"}},
        {"demo",
         {"--output OUT.png", "--size WxH", "--time SECONDS", "--technique TECHNIQUE", "--module PATH",
          "--quiet", "--log CHANNELS", "--version", "Example:"}},
        {"compare",
         {"FILE", "--demo", "--output SHEET.png", "--json", "--times COUNT|SECONDS,...", "default: 3",
          "--animation NAME|INDEX", "default: the first", "--size WxH", "512x512", "--azimuth DEGREES",
          "--wireframe", "--colorize", "--module PATH", "--quiet", "--version", "Exit status 1",
          "Examples:"}}};
    for (auto const& [command, expected] : texts) {
        std::string const help = runWell({command, "--help"});
        for (std::string const& text : expected)
            EXPECT_THAT(help, HasSubstr(text));
    }
}

TEST_F(Help, VersionEverywhere)
{
    for (std::vector<std::string> const& arguments :
         std::vector<std::vector<std::string>>{{"--version"},
                                               {"render", "--version"},
                                               {"info", "--version"},
                                               {"demo", "--version"},
                                               {"compare", "--version"}})
        EXPECT_EQ(runWell(arguments), "sgview " SG_VERSION "\n");
}

} // namespace
