#include "Viewer/Commands/Commands.h"

#include "Viewer/Commands/DeviceChoice.h"
#include "Viewer/Commands/GraphicsSummary.h"
#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Commands/ModelSummary.h"
#include "Viewer/Diagnosis/StoredVerdict.h"
#include "Viewer/Platform/OffscreenRenderer.h"
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

template <typename Summary>
void write(Summary const& summary, bool json)
{
    if (json)
        writeJson(std::cout, summary);
    else
        writeText(std::cout, summary);
    flushStandardOutput();
}

void describeGraphics(InfoRequest const& request)
{
    OffscreenRenderer const renderer({8, 8}, request.module);
    GraphicsSummary const summary{askGraphics(), readStoredVerdict().preferences(),
                                  !renderer.engine().isDiagnosticNeeded(),
                                  storedTechnique(renderer.engine())};
    write(summary, request.json);
}

void describeModel(InfoRequest const& request, Messages const& messages)
{
    Model model = loadOrExplain(request, messages);
    ModelSummary summary = summarise(request.model.file.string(), model);
    summary.posedBy = findAnimation(model, request.model, messages);
    summary.seconds = request.model.seconds;

    ModelScene scene(std::move(model), SceneOptions());
    scene.pose(summary.posedBy, summary.seconds);
    summary.bounds = scene.surfaceBounds();

    write(summary, request.json);
}

} // namespace

void run(InfoRequest const& request, Messages const& messages)
{
    if (!chooseDevice(request.device))
        return;
    if (request.gpu)
        describeGraphics(request);
    else
        describeModel(request, messages);
}

} // namespace sgview
