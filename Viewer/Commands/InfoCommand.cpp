#include "Viewer/Commands/Commands.h"

#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Commands/ModelSummary.h"
#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Scene/ModelScene.h"

#include <iostream>

namespace sgview {

namespace {

Model loadOrExplain(InfoRequest const& request, Messages const& messages)
{
    try {
        return loadModel(request.model, messages);
    } catch (ImportError const& error) {
        if (request.json)
            writeFailureJson(std::cout, request.model.file.string(), error);
        throw;
    }
}

} // namespace

void run(InfoRequest const& request, Messages const& messages)
{
    Model model = loadOrExplain(request, messages);
    ModelSummary summary = summarise(request.model.file.string(), model);
    summary.posedBy = findAnimation(model, request.model, messages);
    summary.seconds = request.model.seconds;

    ModelScene scene(std::move(model), SceneOptions());
    scene.pose(summary.posedBy, summary.seconds);
    summary.bounds = scene.surfaceBounds();

    (request.json ? writeJson : writeText)(std::cout, summary);
    if (!std::cout.flush())
        throw OutputError("standard output cannot be written");
}

} // namespace sgview
