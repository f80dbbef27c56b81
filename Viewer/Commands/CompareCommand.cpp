#include "Viewer/Commands/Commands.h"

#include "Viewer/CommandLine/UsageError.h"
#include "Viewer/Commands/ComparisonTable.h"
#include "Viewer/Commands/ContactSheet.h"
#include "Viewer/Commands/DeviceChoice.h"
#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Platform/PngWriter.h"
#include "Viewer/Scene/DemoScene.h"
#include "Viewer/Scene/ModelScene.h"

#include <iostream>
#include <memory>
#include <optional>
#include <utility>

namespace sgview {

namespace {

/// Techniques that cannot be trusted.
class ComparisonFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

Model load(CompareRequest const& request, Messages const& messages)
{
    if (request.demo)
        return loadCreature(messages);
    Model model = loadModel(request.model, messages);
    for (std::string const& warning : model.warnings)
        messages.warn(warning);
    return model;
}

/// The animation that was asked for, or else the first; `none` where the model has none.
Index animationOf(Model const& model, CompareRequest const& request, Messages const& messages)
{
    if (!request.model.animation && !model.animations.empty())
        return 0;
    return findAnimation(model, request.model, messages);
}

std::vector<double> momentsOf(Model const& model, Index animation, CompareRequest const& request)
{
    if (animation != none)
        return request.moments.of(model.animations[static_cast<std::size_t>(animation)].length);
    if (!request.moments.seconds.empty())
        throw UsageError("--times: " + request.model.file.string() + " has no animation");
    return {0.0};
}

/// All but the driver and the results.
Comparison describe(Model const& model, Index animation, CompareRequest const& request)
{
    Comparison comparison;
    comparison.subject = request.demo ? "demonstration scene" : request.model.file.string();
    if (animation != none)
        comparison.animation = model.animations[static_cast<std::size_t>(animation)].name;
    comparison.size = request.size;
    comparison.moments = momentsOf(model, animation, request);
    return comparison;
}

MovingScene makeDemoScene(Model creature, PictureSize size)
{
    auto const scene = std::make_shared<DemoScene>(std::move(creature));
    scene->setView(size.width, size.height);
    return {scene->root(), [scene](double seconds) { scene->pose(seconds); }};
}

MovingScene makeModelScene(Model model, Index animation, CompareRequest const& request)
{
    auto const scene = std::make_shared<ModelScene>(std::move(model), request.scene);
    return {scene->root(), [scene, animation, view = request.view, size = request.size](double seconds) {
                scene->pose(animation, seconds);
                scene->setView(view, size.width, size.height);
            }};
}

void requireTrust(std::vector<TechniqueResult> const& results)
{
    std::string list;
    for (TechniqueResult const& result : results)
        if (result.verdict() == TechniqueResult::Verdict::different)
            list += (list.empty() ? "" : ", ") + std::string(nameOf(result.technique));
    if (!list.empty())
        throw ComparisonFailure("1% of a frame or more differs from the plain picture: " + list);
}

} // namespace

void run(CompareRequest const& request, Messages const& messages)
{
    if (!chooseDevice(request.device))
        return;
    Model model = load(request, messages);
    Index const animation = animationOf(model, request, messages);
    Comparison comparison = describe(model, animation, request);
    {
        auto const progress = messages.begin("comparing techniques");
        OffscreenRenderer renderer(request.size, request.module);
        comparison.driver = OffscreenRenderer::driver();
        std::optional<ContactSheet> sheet;
        if (request.output)
            sheet.emplace(comparison);
        MovingScene const scene = request.demo ? makeDemoScene(std::move(model), request.size)
                                               : makeModelScene(std::move(model), animation, request);
        comparison.results = compareTechniques(
            renderer, scene, comparison.moments,
            [&sheet](Technique technique, std::size_t moment, Picture const& picture, Picture const& plain) {
                if (sheet)
                    sheet->add(technique, moment, picture, plain);
            });
        if (sheet) {
            sheet->conclude(comparison.results);
            writePng(*request.output, sheet->picture());
        }
    }
    (request.json ? writeJson : writeText)(std::cout, comparison);
    flushStandardOutput();
    requireTrust(comparison.results);
}

} // namespace sgview
