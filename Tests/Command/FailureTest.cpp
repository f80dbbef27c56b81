#include "Tests/Command/Sgview.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int badInput = 1;
constexpr int badUsage = 2;

class Failure : public SgviewTest {
protected:
    /// Usage errors while drawing the creature.
    void expectBadOption(std::vector<std::string> const& options, std::string const& line) const
    {
        std::vector<std::string> arguments{"render", creature(), "--output", "a.png"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        expectFailure(arguments, badUsage, line);
    }

    /// The one line about a job that cannot be done, which leaves nothing behind.
    [[nodiscard]] std::string lineFor(std::vector<std::string> const& arguments,
                                      Circumstances const& circumstances = {}) const
    {
        SCOPED_TRACE(testing::PrintToString(arguments));
        std::vector<std::string> const before = filesInFolder();
        Outcome const outcome = run(arguments, circumstances);
        EXPECT_EQ(outcome.status, badInput);
        EXPECT_EQ(outcome.signal, 0);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
        EXPECT_EQ(filesInFolder(), before);
        return outcome.errors;
    }
    [[nodiscard]] std::string lineForModel(std::string const& file) const
    {
        return lineFor({"render", file, "--output", "a.png"});
    }
};

TEST_F(Failure, Commands)
{
    expectFailure({"draw"}, badInput, "draw: there is no such file or command");
    expectFailure({"--technique", "vbo", "render", creature(), "--output", "a.png"}, badUsage,
                  "--technique stands before the command render; what a command is to know comes after it");
    expectFailure({"duck.dae", "info", creature()}, badUsage,
                  "FILE stands before the command info; what a command is to know comes after it");
    expectFailure({""}, badUsage, "FILE: no file is named");
    expectFailure({"render"}, badUsage, "FILE is required");
    expectFailure({"render", creature()}, badUsage, "--output is required");
    expectFailure({"info"}, badUsage, "FILE is required, or --gpu");
    expectFailure({"demo"}, badUsage, "--output is required, or --window");
    expectFailure({"demo", "--window", "--output", "a.png"}, badUsage, "--output excludes --window");
    expectFailure({"demo", "--window", "--time", "1"}, badUsage, "--window excludes --time");
    expectFailure({"render", "", "--output", "a.png"}, badUsage, "FILE: no file is named");
    expectFailure({"render", creature(), "--output", ""}, badUsage, "--output: no file is named");
    expectFailure({"demo", "--wireframe", "--output", "a.png"}, badUsage,
                  "unknown option --wireframe; see sgview demo --help");
}

TEST_F(Failure, WindowWithoutADisplay)
{
    Circumstances const dark{
        {{"DISPLAY", std::nullopt}, {"WAYLAND_DISPLAY", std::nullopt}, {"SDL_VIDEODRIVER", std::nullopt}},
        {},
        false,
        {}};
    std::string const line =
        "no display to open a window on; 'sgview render' and 'sgview demo --output' draw "
        "into files without one";
    expectFailure({}, badInput, line, dark);
    expectFailure({"demo", "--window"}, badInput, line, dark);
    expectFailure({creature()}, badInput, line, dark);
    expectFailure({creature(), "absent.glb"}, badInput, "absent.glb: there is no such file or command", dark);
}

TEST_F(Failure, DisplayThatIsNotThere)
{
    Circumstances const unplugged{
        {{"DISPLAY", ":4711"}, {"WAYLAND_DISPLAY", std::nullopt}, {"SDL_VIDEODRIVER", std::nullopt}},
        {},
        false,
        {}};
    EXPECT_THAT(lineFor({creature()}, unplugged),
                testing::AllOf(testing::StartsWith("sgview: no display to open a window on (x11: "),
                               testing::HasSubstr("sgview render")));
}

TEST_F(Failure, ScreenshotNames)
{
    for (char const* pattern : {"", "{", "{modell}", "{frame}"})
        expectFailure(
            {"--screenshot-name", pattern}, badUsage,
            "--screenshot-name: '" + std::string(pattern) +
                "' is not a template for names: text with {model}, {date}, {time} and {number} in it");
}

TEST_F(Failure, Sizes)
{
    for (char const* size : {"0x0",     "0x10",    "10x0",        "99999x99999",
                             "65537x1", "1x65537", "16385x16384", "-5x5",
                             "5x-5",    "x",       "5",           "5x",
                             "x5",      "",        "5x5x5",       "5 x5",
                             "1e3x5",   "0x1p3",   "5.0x5",       "99999999999999999999x1"})
        expectBadOption({"--size", size},
                        "--size: '" + std::string(size) +
                            "' is not a picture size: width x height in pixels, 1 to 65536 each "
                            "and 268435456 in all, as in 1024x768");
}

TEST_F(Failure, Numbers)
{
    for (char const* number :
         {"-1", "nan", "-nan", "inf", "1e7", "1e999", "", "one", "1s", "0x1", " 1", "1 "})
        expectBadOption({"--animation", "0", "--time", number},
                        "--time: '" + std::string(number) + "' is not a number from 0 to 1000000");
    for (char const* number : {"361", "-361", "nan"})
        expectBadOption({"--azimuth", number},
                        "--azimuth: '" + std::string(number) + "' is not a number from -360 to 360");
    for (char const* number : {"91", "-91", "inf"})
        expectBadOption({"--elevation", number},
                        "--elevation: '" + std::string(number) + "' is not a number from -90 to 90");
    for (char const* number : {"0", "-1", "1001", "nan"})
        expectBadOption({"--zoom", number},
                        "--zoom: '" + std::string(number) + "' is not a number from 0.001 to 1000");
    for (char const* axis : {"w", "Z", "-z", "xy", ""})
        expectBadOption({"--up", axis}, "--up: '" + std::string(axis) + "' is not an axis: y, z or x");
    for (char const* number : {"0", "-1", "1.5", "1048577", "4294967297"})
        expectBadOption({"--memory-limit", number}, "--memory-limit: '" + std::string(number) +
                                                        "' is not a whole number from 1 to 1048576");
    for (char const* number : {"0", "86401", "ten"})
        expectBadOption({"--time-limit", number},
                        "--time-limit: '" + std::string(number) + "' is not a whole number from 1 to 86400");
}

TEST_F(Failure, Colours)
{
    for (char const* color : {"red", "123456", "#12345", "#1234567", "#12345g", "#-12345", "# 12345", ""})
        expectBadOption({"--background", color},
                        "--background: '" + std::string(color) +
                            "' is not a colour: #rrggbb, as in #ff8000, or transparent");
    for (char const* pair : {"#123456", "#123456,", ",#123456", "#123456,#123456,#123456", "#123456 #123456"})
        expectBadOption({"--colorize", pair},
                        "--colorize: '" + std::string(pair) +
                            "' is not a pair of colours: #rrggbb,#rrggbb, as in #ffeecc,#301000");
}

TEST_F(Failure, OptionsThatDoNotGoTogether)
{
    expectBadOption({"--time", "1"}, "--time requires --animation");
    expectBadOption({"--quiet", "--log", "opengl"}, "--quiet excludes --log");
    expectBadOption({"--log", "everything"}, "--log: 'everything' is not a log channel: opengl or error");
    expectBadOption({"--log", ""}, "--log: '' is not a log channel: opengl or error");
    expectBadOption({"--nonsense"}, "unknown option --nonsense; see sgview render --help");
    expectBadOption({"--module", ""}, "--module: no file is named");
    expectBadOption({"--zoom", "0"}, "--zoom: '0' is not a number from 0.001 to 1000");
    expectBadOption({"second.glb"},
                    "--output: names for the pictures of several models need {model} or {index}");
}

TEST_F(Failure, UnknownAnimationListsThoseThereAre)
{
    for (char const* wanted : {"fly", "2", "-1", "", "0x0", "99999999999"})
        expectBadOption({"--animation", wanted}, "--animation: " + creature() + " has no animation '" +
                                                     std::string(wanted) + "'; it has 0 'swim', 1 'look'");
}

TEST_F(Failure, FilesThatAreNoModels)
{
    EXPECT_EQ(lineForModel("missing.glb"), "sgview: missing.glb: there is no such file\n");
    EXPECT_EQ(lineForModel("two\nlines\x1b[31m.glb"), "sgview: two lines [31m.glb: there is no such file\n");
    EXPECT_THAT(lineForModel("/"), HasSubstr("folder"));
    EXPECT_THAT(lineForModel("/dev/zero"), StartsWith("sgview: /dev/zero: "));

    writeFile("empty.obj", "");
    EXPECT_THAT(lineForModel("empty.obj"), AllOf(StartsWith("sgview: empty.obj: "), HasSubstr("empty")));
    writeFile("text.txt", "Dear reader,\n\nthis is a letter.\n");
    EXPECT_THAT(lineForModel("text.txt"), AllOf(StartsWith("sgview: text.txt: "), HasSubstr("text")));
    static_cast<void>(render("picture.png", {creature(), "--size", "8x8"}));
    EXPECT_THAT(lineForModel("picture.png"),
                AllOf(StartsWith("sgview: picture.png: "), HasSubstr("picture")));
    std::filesystem::copy_file(folder / "picture.png", folder / "picture.obj");
    EXPECT_THAT(lineForModel("picture.obj"),
                AllOf(StartsWith("sgview: picture.obj: "), HasSubstr("picture")));
    writeFile("broken.gltf", "{\"asset\": {\"version\": \"2.0\"}, \"meshes\": 7");
    EXPECT_THAT(lineForModel("broken.gltf"), StartsWith("sgview: broken.gltf: "));
    EXPECT_THAT(lineForModel(testModel("points.gltf")), HasSubstr("point cloud"));
}

TEST_F(Failure, FileThatMayNotBeRead)
{
    writeFile("secret.glb", "glTF");
    std::filesystem::permissions(folder / "secret.glb", std::filesystem::perms::none);
    Circumstances anybody;
    anybody.asAnybody = true;
    EXPECT_THAT(lineFor({"info", "secret.glb"}, anybody),
                AllOf(StartsWith("sgview: secret.glb: "), HasSubstr("ermission")));
}

TEST_F(Failure, ImportBeyondItsLimits)
{
    std::string line = lineFor({"info", creature(), "--memory-limit", "1"});
    EXPECT_THAT(line, HasSubstr("--memory-limit grants more"));
}

TEST_F(Failure, OutputsThatCannotBeWritten)
{
    EXPECT_EQ(lineFor({"render", creature(), "--output", "no/a.png"}),
              "sgview: no/a.png: there is no such folder\n");
    EXPECT_EQ(lineFor({"render", creature(), "--output", "."}), "sgview: .: Is a directory\n");
    EXPECT_EQ(lineFor({"render", creature(), "--output", "/dev/full"}),
              "sgview: /dev/full: No space left on device\n");
    EXPECT_EQ(lineFor({"demo", "--output", "no/a.png"}), "sgview: no/a.png: there is no such folder\n");
}

TEST_F(Failure, NoRoomForWhatIsAskedAboutSgview)
{
    Circumstances full;
    full.output = "/dev/full";
    for (std::vector<std::string> const& arguments :
         std::vector<std::vector<std::string>>{{"--help"},
                                               {"--version"},
                                               {"help", "render"},
                                               {"render", "--help"},
                                               {"--list-keys"},
                                               {"--print-config"},
                                               {"--print-completion", "bash"},
                                               {"--print-man"}})
        expectFailure(arguments, 1, "standard output cannot be written", full);
}

TEST_F(Failure, NoRoomForTheWholePicture)
{
    Circumstances cramped;
    cramped.largestFile = 1000;
    EXPECT_EQ(lineFor({"render", creature(), "--output", "a.png"}, cramped),
              "sgview: a.png: File too large\n");
    writeFile("a.png", "old");
    EXPECT_EQ(lineFor({"render", creature(), "--output", "a.png"}, cramped),
              "sgview: a.png: File too large\n");
    EXPECT_EQ(contentOf("a.png"), "old");
}

TEST_F(Failure, ProtectedFolderAndProtectedFile)
{
    using std::filesystem::perms;
    Circumstances anybody;
    anybody.asAnybody = true;
    writeFile("protected.png", "old");
    std::filesystem::permissions(folder / "protected.png", perms::owner_read);
    EXPECT_EQ(lineFor({"render", creature(), "--output", "protected.png"}, anybody),
              "sgview: protected.png: Permission denied\n");
    EXPECT_EQ(contentOf("protected.png"), "old");

    std::filesystem::permissions(folder, perms::owner_read | perms::owner_exec);
    EXPECT_EQ(lineFor({"render", creature(), "--output", "a.png"}, anybody),
              "sgview: a.png: Permission denied\n");
}

TEST_F(Failure, NoModule)
{
    std::filesystem::create_directories(folder / "empty");
    EXPECT_THAT(lineFor({"render", creature(), "--output", "a.png", "--module", "empty"}),
                AllOf(StartsWith("sgview: no renderer module could be loaded; tried "),
                      EndsWith("/empty/OpenGLRenderer.so: cannot open shared object file: No such file or "
                               "directory\n")));
    EXPECT_THAT(lineFor({"demo", "--output", "a.png", "--module", WRONG_MODULES "/RegistersNothing.so"}),
                EndsWith("RegistersNothing.so: the module registers no renderer\n"));

    Circumstances elsewhere;
    elsewhere.environment["SG_MODULE_PATH"] = (folder / "empty").string();
    EXPECT_EQ(run({"render", creature(), "--output", "a.png"}, elsewhere).status, 0)
        << "the module beside the libraries is tried next";
}

TEST_F(Failure, NoOpenGL)
{
    Circumstances bare;
    bare.environment = {{"__EGL_VENDOR_LIBRARY_FILENAMES", "/nowhere"},
                        {"DISPLAY", std::nullopt},
                        {"XDG_RUNTIME_DIR", std::nullopt}};
    EXPECT_THAT(lineFor({"render", creature(), "--output", "a.png"}, bare),
                StartsWith("sgview: no OpenGL context without a screen; tried offscreen: "));
}

} // namespace
