#include "Viewer/CommandLine/CommandOptions.h"

#include "Viewer/CommandLine/OptionTable.h"
#include "Viewer/CommandLine/SharedOptions.h"

#include <filesystem>

namespace sgview {

namespace {

constexpr std::uint32_t mostInACrowd = 10'000;
constexpr std::uint32_t mostFrames = 100'000;

std::string listOfScenes()
{
    std::vector<std::string> names;
    for (BenchSceneKind const kind : allBenchScenes)
        names.emplace_back(nameOf(kind));
    return joined(names, ", ");
}

void setScene(BenchRequest& bench, std::string const& text)
{
    bench.scene = benchSceneNamed(text);
    bench.model.file = text;
    std::error_code ignored;
    if (!bench.scene && !std::filesystem::exists(bench.model.file, ignored))
        throw UsageError("--scene: '" + text + "' is neither a file nor one of " + listOfScenes());
}

std::uint32_t mostOf(BenchRequest const& bench)
{
    return bench.scene ? static_cast<std::uint32_t>(mostOf(*bench.scene)) : mostInACrowd;
}

void checkTogether(BenchRequest const& bench)
{
    if (bench.count && static_cast<std::uint32_t>(*bench.count) > mostOf(bench))
        throw UsageError("--count: " + std::to_string(*bench.count) + " is more than the " +
                         std::to_string(mostOf(bench)) + " that this scene can have");
    if (!bench.scene && bench.moving)
        throw UsageError("--moving is for the built-in scenes; a model moves by its animation");
    if (bench.scene && bench.model.animation)
        throw UsageError("--animation is for models; the scene is " + std::string(nameOf(*bench.scene)));
}

void addSceneChoice(CLI::App& command, BenchRequest& bench)
{
    command.option_defaults()->group("Scene");
    command
        .add_option_function<std::string>(
            "--scene", [&bench](std::string const& text) { setScene(bench, text); },
            "What to draw: " + listOfScenes() +
                ", or models from a file, each at its own time of the animation")
        ->default_str(std::string(nameOf(*bench.scene)))
        ->type_name("SCENE|FILE")
        ->configurable(false);
    addOption(
        command, "-n,--count", bench.count,
        [](std::string const& text) { return static_cast<int>(parseWhole(text, 1, 1'000'000)); },
        "How many surfaces, nested transforms or models (default: 10000 of many, 2000 of textured and deep, "
        "64 of skinned, 1 of a file)")
        ->type_name("N")
        ->configurable(false);
    command.add_flag("--moving", bench.moving, "Set every transform anew for each frame")
        ->configurable(false);
}

void addMeasurement(CLI::App& command, BenchRequest& bench)
{
    command.option_defaults()->group("Output");
    addOption(
        command, "--frames", bench.frames,
        [](std::string const& text) { return static_cast<int>(parseWhole(text, 1, mostFrames)); },
        "How many frames to time, after some to warm up")
        ->default_str(std::to_string(bench.frames))
        ->type_name("N");
    addOption(command, "-o,--output", bench.output, asPngPath, "A PNG file to write: the last frame")
        ->type_name("PICTURE.png")
        ->configurable(false);
    command.add_flag("--json", bench.json, "As JSON, with the time of every frame");
}

} // namespace

void addBenchCommand(CLI::App& app, BenchRequest& bench, GeneralOptions& general)
{
    CLI::App* const command = app.add_subcommand("bench", "Measure what the frames of a scene cost");
    addSceneChoice(*command, bench);
    addAnimation(*command, bench.model.animation, "the first");
    addImportOptions(*command, bench.model.import);
    addMeasurement(*command, bench);
    addTechnique(*command, bench.technique);
    addModule(*command, bench.module);
    addSize(*command, bench.size, "the frames");
    addDevice(*command, bench.device);
    addGeneralOptions(*command, general);
    command->callback([&bench] { checkTogether(bench); });
    command->footer(
        "A frame's time runs from the scene's first change until OpenGL is done; none waits for a "
        "screen.\n"
        "Examples:\n"
        "  sgview bench --scene skinned --count 100\n"
        "  sgview bench --scene walker.glb --count 50 --technique vbo --json\n"
        "  GALLIUM_NOOP=1 sgview bench --scene many --moving");
}

} // namespace sgview
