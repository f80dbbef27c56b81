#include "Viewer/CommandLine/SharedOptions.h"

#include "Utilities/Strings.h"

#include <algorithm>

namespace sgview {

namespace {

constexpr char const* version = "sgview " SG_VERSION;
constexpr char const* modelKinds = ": glTF 2, Collada, FBX, OBJ, X, 3DS, STL, PLY, ...";

void beginGroup(CLI::App& app, std::string const& name)
{
    app.option_defaults()->group(name);
}

} // namespace

std::string longName(std::string const& names)
{
    return names.substr(names.rfind(',') + 1);
}

CLI::Option* addNumber(CLI::App& app, std::string const& names, double& target, double least, double most,
                       std::string const& description)
{
    return addOption(
               app, names, target,
               [least, most](std::string const& text) { return parseNumber(text, least, most); }, description)
        ->default_str(stringize(target));
}

std::filesystem::path asPath(std::string const& text)
{
    if (text.empty())
        throw UsageError("no file is named");
    return text;
}

std::filesystem::path asPngPath(std::string const& text)
{
    std::filesystem::path path = asPath(text);
    std::string const extension = path.extension().string();
    if (isForeignExtension(extension) || extension == ".webp")
        throw UsageError(extension + " is not written; .png is");
    return path;
}

CLI::Option* addFile(CLI::App& app, ModelRequest& model)
{
    return addOption(app, "FILE", model.file, asPath, "The model" + std::string(modelKinds))
        ->type_name("")
        ->configurable(false);
}

CLI::Option* addFiles(CLI::App& app, std::vector<std::filesystem::path>& files, std::string const& what)
{
    return app
        .add_option_function<std::vector<std::string>>(
            "FILE",
            [&files](std::vector<std::string> const& names) {
                if (std::ranges::count(names, std::string()) > 0)
                    throw UsageError("FILE: no file is named");
                files.assign(names.begin(), names.end());
            },
            what + modelKinds)
        ->type_name("")
        ->configurable(false);
}

CLI::Option* addAnimation(CLI::App& app, std::optional<std::string>& animation, std::string const& byDefault)
{
    beginGroup(app, "Pose");
    return app
        .add_option("-a,--animation", animation,
                    "Pose by this animation of the file (default: " + byDefault + ")")
        ->type_name("NAME|INDEX")
        ->configurable(false);
}

void addPoseOptions(CLI::App& app, ModelRequest& model)
{
    CLI::Option* const animation = addAnimation(app, model.animation, "rest pose");
    addNumber(app, "-t,--time", model.seconds, 0.0, Moments::latest,
              "Moment of the animation, seconds from its start; past its end the end holds")
        ->type_name("SECONDS")
        ->configurable(false)
        ->needs(animation);
}

void addMoments(CLI::App& app, Moments& moments)
{
    beginGroup(app, "Pose");
    addOption(app, "--times", moments, parseMoments,
              "Moments of the animation: how many, spread over its length, or seconds with commas between")
        ->default_str(std::to_string(Moments::usualCount))
        ->type_name("COUNT|SECONDS,...")
        ->configurable(false);
}

void addSearchOptions(CLI::App& app, ImportOptions& import)
{
    constexpr std::uint32_t mostMebibytes = 1U << 20;

    beginGroup(app, "Import");
    app.add_option_function<std::vector<std::string>>(
           "--texture-folder",
           [&import](std::vector<std::string> const& folders) {
               import.folders.assign(folders.begin(), folders.end());
           },
           "Also look here for textures and side files; may be given more than once")
        ->type_name("DIR")
        ->expected(1)
        ->take_all();
    addOption(
        app, "--memory-limit", import.limits.memory,
        [](std::string const& text) { return std::uint64_t{parseWhole(text, 1, mostMebibytes)} << 20; },
        "Memory that the import may use, MiB; by default less on machines of less than four times that")
        // The same on every machine: manual pages travel.
        ->default_str(std::to_string(enoughMemory >> 20))
        ->type_name("MIB");
}

void addImportOptions(CLI::App& app, ImportOptions& import)
{
    addSearchOptions(app, import);
    addOption(
        app, "--time-limit", import.limits.seconds,
        [](std::string const& text) { return parseWhole(text, 1, mostSeconds); },
        "Time that the import may take, seconds")
        ->default_str(std::to_string(import.limits.seconds))
        ->type_name("SECONDS");
}

void addSize(CLI::App& app, PictureSize& size, std::string const& what, std::string const& unit)
{
    addOption(app, "-s,--size", size, parseSize, "Size of " + what + ", " + unit)
        ->default_str(std::to_string(size.width) + "x" + std::to_string(size.height))
        ->type_name("WxH");
}

CLI::Option* addModule(CLI::App& app, std::optional<std::filesystem::path>& module)
{
    beginGroup(app, "Drawing");
    return addOption(app, "--module", module, asPath,
                     "The renderer module, or the folder it is in (default: the folders of SG_MODULE_PATH, "
                     "then beside the engine's libraries)")
        ->type_name("PATH");
}

void addTechnique(CLI::App& app, std::optional<Technique>& technique)
{
    beginGroup(app, "Drawing");
    addOption(app, "-T,--technique", technique, parseTechnique,
              "How to draw: plain, vbo, program, program+vbo, shader or shader+vbo; auto is what the "
              "graphics diagnostic found best, and runs it first where it has not run yet")
        ->default_str("auto")
        ->type_name("TECHNIQUE");
}

CLI::Option* addDevice(CLI::App& app, DeviceRequest& device)
{
    constexpr std::uint32_t largestNumber = 63;
    beginGroup(app, "Drawing");
    return app
        .add_option_function<std::string>(
            "--device",
            [&device](std::string const& text) {
                device.list = text == "list";
                try {
                    if (!device.list)
                        device.number = parseWhole(text, 0, largestNumber);
                } catch (UsageError const&) {
                    throw UsageError("--device: '" + text +
                                     "' is neither a number nor list, which says which devices there are");
                }
            },
            "The graphics device to draw with; list says which there are (default: the system's choice)")
        ->type_name("N|list");
}

void addDrawingOptions(CLI::App& app, PictureRequest& picture, std::string const& what)
{
    beginGroup(app, "Drawing");
    addSize(app, picture.size, what);
    addTechnique(app, picture.technique);
    addModule(app, picture.module);
    addDevice(app, picture.device);
}

void addViewOptions(CLI::App& app, CameraView& view)
{
    beginGroup(app, "View");
    addNumber(app, "--azimuth", view.azimuth, -360.0, 360.0,
              "From where to look, degrees around the up axis: 0 is the front, 90 the model's left side")
        ->type_name("DEGREES");
    addNumber(app, "--elevation", view.elevation, -90.0, 90.0, "Degrees above the horizon")
        ->type_name("DEGREES");
    addNumber(app, "--zoom", view.zoom, 0.001, 1000.0, "Magnification; at 1 the whole model is in view")
        ->type_name("FACTOR");
    addOption(app, "--up", view.up, parseUp, "The axis of the file that points up in the picture")
        ->default_str(std::string(nameOf(view.up)))
        ->type_name("y|z|x");
    app.add_flag("--orthographic", view.orthographic,
                 "Draw without perspective: nothing shrinks with its distance");
}

void addSceneOptions(CLI::App& app, SceneOptions& scene, bool mayBeTransparent)
{
    beginGroup(app, "Scene");
    CLI::Option* const background =
        mayBeTransparent
            ? addOption(app, "-b,--background", scene.background, parseBackground,
                        "Background colour, or transparent")
                  ->type_name("#rrggbb|transparent")
            : addOption(app, "-b,--background", scene.background, parseColor, "Background colour")
                  ->type_name("#rrggbb");
    background->default_str(inHex(scene.background));
    addOption(app, "--colorize", scene.colorize, parseColorPair,
              "Tint all textures: light pixels towards the first colour, dark ones towards the second")
        ->type_name("#rrggbb,#rrggbb");
    app.add_flag("-w,--wireframe", scene.wireframe, "Draw edges instead of faces");
    app.add_flag("--unlit", scene.unlit, "Draw without lights");
    app.add_flag("--mirror", scene.mirror, "Mirror the model through its origin");
}

void addGeneralOptions(CLI::App& app, GeneralOptions& general)
{
    beginGroup(app, "General");
    CLI::Option* const quiet =
        app.add_flag("-q,--quiet", general.messages.quiet, "No warnings, no log, no progress; errors alone");
    addOption(app, "--log", general.messages.channels, parseChannels,
              "Log channels to show: opengl, error, or both with a comma between")
        ->default_str("error")
        ->type_name("CHANNELS")
        ->excludes(quiet);
    CLI::Option* const configuration =
        addOption(app, "--config", general.configuration, asPath,
                  "Take what options are not given from this file (default: the user's own, if there is one)")
            ->type_name("FILE")
            ->configurable(false);
    app.add_flag("--no-config", general.noConfiguration, "Take nothing from a configuration file")
        ->configurable(false)
        ->excludes(configuration);
    app.set_help_flag("-h,--help", "Print this help and exit")->configurable(false);
    app.set_version_flag("-V,--version", version, "Print the version and exit");
}

void excludeAll(CLI::App& app, CLI::Option* option)
{
    for (CLI::Option* const other : app.get_options())
        if (other != option && other != app.get_help_ptr())
            option->excludes(other);
}

} // namespace sgview
