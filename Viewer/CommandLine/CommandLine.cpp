#include "Viewer/CommandLine/CommandLine.h"

#include "Viewer/CommandLine/OptionText.h"
#include "Viewer/CommandLine/UsageError.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace sgview {

namespace {

constexpr char const* version = "sgview " SG_VERSION;

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

CLI::Option* addFile(CLI::App& app, ModelRequest& model)
{
    return addOption(app, "FILE", model.file, asPath,
                     "The model: glTF 2, Collada, FBX, OBJ, X, 3DS, STL, PLY, ...")
        ->type_name("");
}

CLI::Option* addAnimation(CLI::App& app, ModelRequest& model, std::string const& byDefault)
{
    return app
        .add_option("--animation", model.animation,
                    "Pose by this animation of the file (default: " + byDefault + ")")
        ->type_name("NAME|INDEX");
}

void addImportOptions(CLI::App& app, ModelRequest& model)
{
    constexpr std::uint32_t mostMebibytes = 1U << 20;
    constexpr std::uint32_t mostSeconds = 86400;

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

void addModelOptions(CLI::App& app, ModelRequest& model)
{
    addFile(app, model)->required();
    CLI::Option* const animation = addAnimation(app, model, "rest pose");
    addNumber(app, "--time", model.seconds, 0.0, Moments::latest,
              "Moment of the animation, seconds from its start; past its end the end holds (default: 0)")
        ->type_name("SECONDS")
        ->needs(animation);
    addImportOptions(app, model);
}

void addSize(CLI::App& app, PictureSize& size, std::string const& what)
{
    addOption(app, "--size", size, parseSize,
              "Size of " + what + ", pixels (default: " + std::to_string(size.width) + "x" +
                  std::to_string(size.height) + ")")
        ->type_name("WxH");
}

void addModule(CLI::App& app, std::optional<std::filesystem::path>& module)
{
    addOption(
        app, "--module", module, asPath,
        "The renderer module, or the folder it is in (default: the folders of SG_MODULE_PATH, then beside "
        "the engine's libraries)")
        ->type_name("PATH");
}

void addPictureOptions(CLI::App& app, PictureRequest& picture)
{
    addOption(app, "--output", picture.output, asPath, "The PNG file to write")
        ->type_name("OUT.png")
        ->required();
    addSize(app, picture.size, "the picture");
    addOption(
        app, "--technique", picture.technique, parseTechnique,
        "How to draw: plain, vbo, program, program+vbo, shader or shader+vbo; auto is what the graphics "
        "diagnostic found best, or else plain (default: auto)")
        ->type_name("TECHNIQUE");
    addModule(app, picture.module);
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

void addRenderCommand(CLI::App& app, RenderRequest& render, MessageOptions& messages)
{
    CLI::App* const command = app.add_subcommand("render", "Draw a model into a PNG file");
    addModelOptions(*command, render.model);
    addPictureOptions(*command, render.picture);
    addViewOptions(*command, render.view);
    addSceneOptions(*command, render.scene);
    addGeneralOptions(*command, messages);
    command->footer("Examples:\n"
                    "  sgview render duck.dae --output duck.png\n"
                    "  sgview render walker.glb --animation Walk --time 0.4 --azimuth -45 --output walk.png\n"
                    "  sgview render crate.obj --size 512x512 --background #203040 --output crate.png");
}

void addInfoCommand(CLI::App& app, InfoRequest& info, MessageOptions& messages)
{
    CLI::App* const command =
        app.add_subcommand("info", "Say what is in a model, and where its surfaces are");
    addModelOptions(*command, info.model);
    command->add_flag("--json", info.json, "As JSON");
    addGeneralOptions(*command, messages);
    command->footer("Examples:\n"
                    "  sgview info duck.dae\n"
                    "  sgview info walker.glb --animation 0 --time 0.4 --json");
}

void addDemoCommand(CLI::App& app, DemoRequest& demo, MessageOptions& messages)
{
    CLI::App* const command = app.add_subcommand("demo", "Draw a scene that shows what the renderer can do");
    addPictureOptions(*command, demo.picture);
    addNumber(*command, "--time", demo.seconds, 0.0, Moments::latest,
              "Moment of the scene, seconds from its start (default: 0)")
        ->type_name("SECONDS");
    addGeneralOptions(*command, messages);
    command->footer("Example:\n"
                    "  sgview demo --output demo.png");
}

void addCompareCommand(CLI::App& app, CompareRequest& compare, MessageOptions& messages)
{
    CLI::App* const command =
        app.add_subcommand("compare", "Draw the same frames by every technique, and say how they differ");
    CLI::Option* const file = addFile(*command, compare.model);
    addAnimation(*command, compare.model, "the first");
    addImportOptions(*command, compare.model);
    addViewOptions(*command, compare.view);
    addSceneOptions(*command, compare.scene);
    std::vector<CLI::Option*> const ofModels = command->get_options();

    CLI::Option* const demo =
        command->add_flag("--demo", compare.demo, "The demonstration scene in place of a model");
    for (CLI::Option* const option : ofModels)
        if (option != command->get_help_ptr())
            demo->excludes(option);
    addOption(*command, "--times", compare.moments, parseMoments,
              "Moments of the animation: how many, spread over its length, or seconds with commas between "
              "(default: 3)")
        ->type_name("COUNT|SECONDS,...");
    addOption(*command, "--output", compare.output, asPath,
              "A PNG file to write: every picture beside the plain one, and where they differ")
        ->type_name("SHEET.png");
    addSize(*command, compare.size, "the frames");
    addModule(*command, compare.module);
    command->add_flag("--json", compare.json, "The table as JSON");
    addGeneralOptions(*command, messages);
    command->callback([file, &compare] {
        if (file->empty() && !compare.demo)
            throw UsageError("FILE is required, or --demo");
    });
    command->footer("Exit status 1 if any technique draws 1% of a frame otherwise than the plain one.\n"
                    "Examples:\n"
                    "  sgview compare walker.glb --output sheet.png\n"
                    "  sgview compare walker.glb --animation Walk --times 0.1,0.25,0.7 --size 256x256\n"
                    "  sgview compare --demo --json");
}

} // namespace

std::optional<CommandLine> parseCommandLine(int argc, char const* const* argv)
{
    MessageOptions messages;
    RenderRequest render;
    InfoRequest info;
    DemoRequest demo;
    CompareRequest compare;

    CLI::App app("Draws 3D models, and says what is in them.", "sgview");
    constexpr std::size_t optionColumn = 34;
    app.get_formatter()->column_width(optionColumn);
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("--version", version, "Print the version and exit");
    app.footer("sgview COMMAND --help tells the options of a command.\n"
               "Exit status: 0 done, 1 bad input or a failed job, 2 bad usage.");

    addRenderCommand(app, render, messages);
    addInfoCommand(app, info, messages);
    addDemoCommand(app, demo, messages);
    addCompareCommand(app, compare, messages);

    try {
        app.parse(argc, argv);
    } catch (CLI::Success const& asked) {
        app.exit(asked, std::cout, std::cerr);
        return std::nullopt;
    } catch (CLI::ParseError const& error) {
        throw UsageError(error.what());
    }
    if (app.got_subcommand("render"))
        return CommandLine{messages, render};
    if (app.got_subcommand("info"))
        return CommandLine{messages, info};
    if (app.got_subcommand("demo"))
        return CommandLine{messages, demo};
    if (app.got_subcommand("compare"))
        return CommandLine{messages, compare};
    throw UsageError("a command is wanted: render, info, demo or compare; sgview --help tells more");
}

} // namespace sgview
