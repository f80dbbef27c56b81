#include "Viewer/CommandLine/CommandOptions.h"

#include "Utilities/Strings.h"
#include "Viewer/CommandLine/RenderRules.h"
#include "Viewer/CommandLine/SharedOptions.h"
#include "Viewer/Output/PictureDrawer.h"

namespace sgview {

namespace {

void addFilmOptions(CLI::App& app, FilmOptions& film)
{
    app.option_defaults()->group("Film");
    addOption(app, "--frames", film.frames, parseFrames,
              "Draw these frames of a film, from 0, each by itself and as if all were drawn (default: all of "
              "the turntable, or else the animation once)")
        ->type_name("A-B")
        ->configurable(false);
    addOption(
        app, "--fps", film.rate, [](std::string const& text) { return parseNumber(text, 0.01, 1000.0); },
        "Frames a second; the animation repeats")
        ->default_str(stringize(FilmOptions::usualRate))
        ->type_name("N")
        ->configurable(false);
    addOption(
        app, "--turntable", film.turntable,
        [](std::string const& text) { return parseWhole(text, 1, FrameRange::largest); },
        "Go around the model, once in N frames")
        ->type_name("N")
        ->configurable(false);
}

void addPictureOptions(CLI::App& app, RenderRequest& render)
{
    addOption(
        app, "--quality", render.quality,
        [](std::string const& text) { return static_cast<int>(parseWhole(text, 0, WebpEncoder::lossless)); },
        "Quality of WebP, 0 to 100; 100 loses nothing")
        ->default_str(std::to_string(WebpEncoder::usualQuality))
        ->type_name("N")
        ->configurable(false);
    addOption(
        app, "--supersample", render.supersample,
        [](std::string const& text) {
            return static_cast<int>(parseWhole(text, 1, PictureKind::mostSupersample));
        },
        "Smooth edges: draw N times as large, and average")
        ->default_str(std::to_string(render.supersample))
        ->type_name("N");
    addOption(
        app, "--max-size", render.largestSide,
        [](std::string const& text) {
            return static_cast<int>(parseWhole(text, 1, PictureSize::largestSide));
        },
        "Make the picture smaller, until no side is longer than N pixels")
        ->type_name("N");
}

void addOutputOptions(CLI::App& app, RenderRequest& render)
{
    app.option_defaults()->group("Output");
    addOption(
        app, "-o,--output", render.output, parseOutputName,
        "The picture to write; in its name {model} becomes the model's name, {index} its number, {frame} or "
        "{frame:04} the frame's; - is standard output")
        ->type_name("OUT")
        ->configurable(false);
    addOption(app, "--format", render.format, parsePictureFormat,
              "Format of the picture: png, webp (a film moves), rgba (raw frames) or y4m (default: by the "
              "name of OUT, or else png)")
        ->type_name("FORMAT")
        ->configurable(false);
    addPictureOptions(app, render);
    app.add_flag("--json", render.json, "Print a line of JSON for each model: what became of it");
}

} // namespace

void addRenderCommand(CLI::App& app, RenderRequest& render, GeneralOptions& general)
{
    CLI::App* const command = app.add_subcommand("render", "Draw models into pictures and films");
    addFiles(*command, render.files, "The models");
    addOutputOptions(*command, render);
    addPoseOptions(*command, render.model);
    addFilmOptions(*command, render.film);
    addDrawingOptions(*command, render.picture);
    addViewOptions(*command, render.view);
    addSceneOptions(*command, render.scene, true);
    addImportOptions(*command, render.model.import);
    addGeneralOptions(*command, general);
    command->callback([&render] { checkRules(render); });
    command->footer(
        "Examples:\n"
        "  sgview render duck.dae --output duck.png\n"
        "  sgview render walker.glb --animation Walk --time 0.4 --azimuth -45 --output walk.png\n"
        "  sgview render crate.obj --background transparent --supersample 4 --output crate.png\n"
        "  sgview render *.glb --max-size 256 --output 'small-{model}.png' --json\n"
        "  sgview render duck.dae --turntable 72 --output duck.webp\n"
        "Films, by an encoder, and by many processes of which each draws a share:\n"
        "  sgview render walker.glb --animation Walk --fps 30 --output - --format y4m |\n"
        "      ffmpeg -i - -pix_fmt yuv420p walk.mp4\n"
        "  sgview render walker.glb --turntable 240 --output - --format rgba --size 640x480 |\n"
        "      ffmpeg -f rawvideo -pix_fmt rgba -s 640x480 -r 25 -i - -pix_fmt yuv420p turn.mp4\n"
        "  parallel sgview render walker.glb --turntable 240 --frames {1} --output 'turn-{frame:04}.png' \\\n"
        "      ::: 0-59 60-119 120-179 180-239");
}

} // namespace sgview
