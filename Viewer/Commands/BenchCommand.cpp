#include "Viewer/Commands/Commands.h"

#include "Viewer/Bench/BenchReport.h"
#include "Viewer/Bench/CrowdScene.h"
#include "Viewer/Bench/ProcessMemory.h"
#include "Viewer/Commands/DeviceChoice.h"
#include "Viewer/Commands/MeasuredTechnique.h"
#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Platform/PngWriter.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <utility>

namespace sgview {

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

int countOf(BenchRequest const& request)
{
    return request.count.value_or(request.scene ? usualCount(*request.scene) : 1);
}

/// Mesa's driver that throws drawing away never frees what it is told to upload: has ready what all frames
/// will lose by that, going by what one loses.
void makeUpForLosses(OffscreenRenderer& renderer, BenchScene const& scene, int frames)
{
    std::size_t const before = heapInUse();
    static_cast<void>(renderer.time(scene.root()));
    std::size_t const after = heapInUse();
    std::size_t const lost = after > before ? after - before : 0;
    constexpr std::size_t margin = std::size_t{64} << 20;
    keepMemory((lost + lost / 8) * static_cast<std::size_t>(frames) + margin);
}

Index animationOf(Model const& model, BenchRequest const& request, Messages const& messages)
{
    if (!request.model.animation && !model.animations.empty())
        return 0;
    return findAnimation(model, request.model, messages);
}

std::optional<Model> load(BenchRequest const& request, Messages const& messages)
{
    if (request.scene)
        return std::nullopt;
    Model model = loadModel(request.model, messages);
    for (std::string const& warning : model.warnings)
        messages.warn(warning);
    return model;
}

/// \param model  null for a scene that is not from a file
std::unique_ptr<BenchScene> makeScene(BenchRequest const& request, std::optional<Model> model,
                                      Messages const& messages)
{
    if (!model)
        return makeBenchScene(*request.scene, countOf(request), request.moving);
    Index const animation = animationOf(*model, request, messages);
    return std::make_unique<CrowdScene>(*std::move(model), animation, countOf(request));
}

Technique techniqueFor(BenchRequest const& request, SGRenderer const& renderer, Messages const& messages)
{
    if (request.technique)
        return *request.technique;
    if (isDrawingDiscarded()) { // a measured verdict would be wrong, and kept
        messages.warn("drawn by the plain technique: which is best cannot be measured while all drawing is "
                      "thrown away; --technique chooses one");
        return Technique::plain;
    }
    Progress progress = messages.begin("measuring the graphics card");
    return measuredTechnique(renderer, request.module, progress, messages).technique;
}

BenchResult measure(BenchRequest const& request, Messages const& messages)
{
    BenchResult result;
    result.scene = request.scene ? nameOf(*request.scene) : request.model.file.string();
    result.count = countOf(request);
    result.things = request.scene ? thingsIn(*request.scene) : "models";
    result.moving = request.moving;
    result.size = request.size;
    result.discarded = isDrawingDiscarded();
    std::optional<Model> model = load(request, messages);

    Clock::time_point start = Clock::now();
    OffscreenRenderer renderer(request.size, request.module);
    result.start.driver = std::chrono::duration<double, std::milli>(renderer.contextReady() - start).count();
    result.driver = OffscreenRenderer::driver();
    result.technique = techniqueFor(request, renderer.engine(), messages);
    renderer.use(result.technique);
    result.start.module = millisecondsSince(renderer.contextReady());

    start = Clock::now();
    std::unique_ptr<BenchScene> const scene = makeScene(request, std::move(model), messages);
    scene->setView(request.size.width, request.size.height);
    scene->prepare(0);
    result.start.scene = millisecondsSince(start);
    result.start.firstFrame = renderer.time(scene->root()).count();
    if (result.discarded) {
        result.peakMemory = peakMemory();                // what is set aside is not the scene's
        static_cast<void>(renderer.time(scene->root())); // the frame after the first still makes things
        makeUpForLosses(renderer, *scene, framesDrawnFor(request.frames));
    }

    {
        FrameProgress progress = messages.beginFrames(
            oneLine(result.scene), static_cast<std::size_t>(framesDrawnFor(request.frames)));
        result.frames = measureFrames(renderer, *scene, request.frames, [&progress] { progress.advance(); });
    }
    if (!result.discarded)
        result.peakMemory = peakMemory();
    if (request.output)
        writePng(*request.output, renderer.draw(scene->root()));
    return result;
}

} // namespace

void run(BenchRequest const& request, Messages const& messages)
{
    if (!chooseDevice(request.device))
        return;
    if (isDrawingDiscarded())
        keepMemory(0);
    BenchResult const result = measure(request, messages);
    if (request.json)
        writeJson(std::cout, result);
    else
        writeText(std::cout, result);
    flushStandardOutput();
}

} // namespace sgview
