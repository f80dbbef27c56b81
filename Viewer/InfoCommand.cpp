#include "Viewer/Commands.h"

#include "Viewer/ModelLoader.h"
#include "Viewer/ModelSummary.h"
#include "Viewer/OutputFile.h"
#include "Viewer/Scene/ModelScene.h"

#include <iostream>

namespace sgview {

void run(InfoRequest const& request, Messages const& messages)
{
    Model model = loadModel(request.model, messages);
    ModelSummary summary = summarise(request.model.file.string(), model);
    summary.posedBy = findAnimation(model, request.model);
    summary.seconds = request.model.seconds;

    ModelScene scene(std::move(model), SceneOptions());
    scene.pose(summary.posedBy, summary.seconds);
    summary.bounds = scene.surfaceBounds();

    (request.json ? writeJson : writeText)(std::cout, summary);
    if (!std::cout.flush())
        throw OutputError("standard output cannot be written");
}

} // namespace sgview
