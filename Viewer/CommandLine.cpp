#include "Viewer/CommandLine.h"

#include "Viewer/OptionText.h"
#include "Viewer/UsageError.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace sgview {

namespace {

constexpr char const* version = "sgview " SG_VERSION;
constexpr double latest = 1e6; // seconds

/// An option whose text `parse` turns into `target`.
template <typename Target, typename Parse>
CLI::Option* addOption(CLI::App& app, std::string const& name, Target& target, Parse parse,
                       std::string const& description)
{
    return app.add_option_function<std::string>(
        name,
        [name, &target, parse](std::string const& text) {
            try {
                target = parse(text);
            } catch (UsageError const& error) {
                throw UsageError(name + ": " + error.what());
            }
        },
        description);
}

template <typename Target>
CLI::Option* addNumber(CLI::App& app, std::string const& name, Target& target, double least, double most,
                       std::string const& description)
{
    return addOption(
        app, name, target, [least, most](std::string const& text) { return parseNumber(text, least, most); },
        description);
}

auto const asPath = [](std::string const& text) {
    if (text.empty())
        throw UsageError("no file is named");
    return std::filesystem::path(text);
};

void addGeneralOptions(CLI::App& app, MessageOptions& messages)
{
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("--version", version, "Print the version and exit");
    CLI::Option* const quiet =
        app.add_flag("--quiet", messages.quiet, "No warnings, no log, no progress; errors alone");
    addOption(app, "--log", messages.channels, parseChannels,
              "Log channels to show: opengl, error, or both with a comma between (default: error)")
        ->type_name("CHANNELS")
        ->excludes(quiet);
}

void addModelOptions(CLI::App& app, ModelRequest& model)
{
    constexpr std::uint32_t mostMebibytes = 1U << 20;
    constexpr std::uint32_t mostSeconds = 86400;

    addOption(app, "FILE", model.file, asPath, "The model: glTF 2, Collada, FBX, OBJ, X, 3DS, STL, PLY, ...")
        ->type_name("")
        ->required();
    CLI::Option* const animation = app.add_option("--animation", model.animation,
                                                  "Pose by this animation of the file (default: rest pose)")
                                       ->type_name("NAME|INDEX");
    addNumber(app, "--time", model.seconds, 0.0, latest,
              "Moment of the animation, seconds from its start; past its end the end holds (default: 0)")
        ->type_name("SECONDS")
        ->needs(animation);
    app.add_option_function<std::vector<std::string>>(
           "--texture-folder",
           [&model](std::vector<std::string> const& folders) {
               model.import.folders.assign(folders.begin(), folders.end());
           },
           "Also look here for textures and side files; may be given more than once")
        ->type_name("DIR")
        ->expected(1)
        ->take_all();
    addOption(
        app, "--memory-limit", model.import.limits.memory,
        [](std::string const& text) { return std::uint64_t{parseWhole(text, 1, mostMebibytes)} << 20; },
        "Memory that the import may use, MiB (default: 1024)")
        ->type_name("MIB");
    addOption(
        app, "--time-limit", model.import.limits.seconds,
        [](std::string const& text) { return parseWhole(text, 1, mostSeconds); },
        "Time that the import may take, seconds (default: 10)")
        ->type_name("SECONDS");
}

void addPictureOptions(CLI::App& app, PictureRequest& picture)
{
    addOption(app, "--output", picture.output, asPath, "The PNG file to write")
        ->type_name("OUT.png")
        ->required();
    addOption(app, "--size", picture.size, parseSize, "Size of the picture, pixels (default: 1024x768)")
        ->type_name("WxH");
    addOption(
        app, "--module", picture.module, asPath,
        "The renderer module, or the folder it is in (default: the folders of SG_MODULE_PATH, then beside "
        "the engine's libraries)")
        ->type_name("PATH");
}

void addViewOptions(CLI::App& app, CameraView& view)
{
    addNumber(app, "--azimuth", view.azimuth, -360.0, 360.0,
              "From where to look, degrees around the up axis: 0 is the front, 90 the model's left side "
              "(default: 30)")
        ->type_name("DEGREES");
    addNumber(app, "--elevation", view.elevation, -90.0, 90.0, "Degrees above the horizon (default: 20)")
        ->type_name("DEGREES");
    addNumber(app, "--zoom", view.zoom, 0.001, 1000.0,
              "Magnification; at 1 the whole model is in view (default: 1)")
        ->type_name("FACTOR");
}

void addSceneOptions(CLI::App& app, SceneOptions& scene)
{
    addOption(app, "--background", scene.background, parseColor, "Background colour (default: #ffffff)")
        ->type_name("#rrggbb");
    addOption(app, "--colorize", scene.colorize, parseColorPair,
              "Tint all textures: light pixels towards the first colour, dark ones towards the second")
        ->type_name("#rrggbb,#rrggbb");
    app.add_flag("--wireframe", scene.wireframe, "Draw edges instead of faces");
    app.add_flag("--unlit", scene.unlit, "Draw without lights");
    app.add_flag("--mirror", scene.mirror, "Mirror the model through its origin");
}

} // namespace

std::optional<CommandLine> parseCommandLine(int argc, char const* const* argv)
{
    MessageOptions messages;
    RenderRequest render;
    InfoRequest info;
    DemoRequest demo;

    CLI::App app("Draws 3D models, and says what is in them.", "sgview");
    constexpr std::size_t optionColumn = 34;
    app.get_formatter()->column_width(optionColumn);
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("--version", version, "Print the version and exit");
    app.footer("sgview COMMAND --help tells the options of a command.\n"
               "Exit status: 0 done, 1 bad input or a failed job, 2 bad usage.");

    CLI::App* const renderCommand = app.add_subcommand("render", "Draw a model into a PNG file");
    addModelOptions(*renderCommand, render.model);
    addPictureOptions(*renderCommand, render.picture);
    addViewOptions(*renderCommand, render.view);
    addSceneOptions(*renderCommand, render.scene);
    addGeneralOptions(*renderCommand, messages);
    renderCommand->footer(
        "Examples:\n"
        "  sgview render duck.dae --output duck.png\n"
        "  sgview render walker.glb --animation Walk --time 0.4 --azimuth -45 --output walk.png\n"
        "  sgview render crate.obj --size 512x512 --background #203040 --output crate.png");

    CLI::App* const infoCommand =
        app.add_subcommand("info", "Say what is in a model, and where its surfaces are");
    addModelOptions(*infoCommand, info.model);
    infoCommand->add_flag("--json", info.json, "As JSON");
    addGeneralOptions(*infoCommand, messages);
    infoCommand->footer("Examples:\n"
                        "  sgview info duck.dae\n"
                        "  sgview info walker.glb --animation 0 --time 0.4 --json");

    CLI::App* const demoCommand =
        app.add_subcommand("demo", "Draw a scene that shows what the renderer can do");
    addPictureOptions(*demoCommand, demo.picture);
    addNumber(*demoCommand, "--time", demo.seconds, 0.0, latest,
              "Moment of the scene, seconds from its start (default: 0)")
        ->type_name("SECONDS");
    addGeneralOptions(*demoCommand, messages);
    demoCommand->footer("Example:\n"
                        "  sgview demo --output demo.png");

    try {
        app.parse(argc, argv);
    } catch (CLI::Success const& asked) {
        app.exit(asked, std::cout, std::cerr);
        return std::nullopt;
    } catch (CLI::ParseError const& error) {
        throw UsageError(error.what());
    }
    if (renderCommand->parsed())
        return CommandLine{messages, render};
    if (infoCommand->parsed())
        return CommandLine{messages, info};
    if (demoCommand->parsed())
        return CommandLine{messages, demo};
    throw UsageError("a command is wanted: render, info or demo; sgview --help tells more");
}

} // namespace sgview
