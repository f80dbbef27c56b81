#include "Viewer/Commands/Commands.h"

#include "Viewer/CommandLine/UsageError.h"
#include "Viewer/Commands/DeviceChoice.h"
#include "Viewer/Commands/GraphicsSummary.h"
#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Commands/ModelSummary.h"
#include "Viewer/Diagnosis/StoredVerdict.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Platform/OffscreenRenderer.h"
#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Report/Json.h"
#include "Viewer/Scene/ModelScene.h"

#include <iostream>
#include <stdexcept>
#include <utility>

namespace sgview {

namespace {

/// Models that could not be described, each of which has been told of.
class InfoFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

void describeGraphics(InfoRequest const& request)
{
    OffscreenRenderer const renderer({8, 8}, request.module);
    GraphicsSummary const summary{askGraphics(), readStoredVerdict().preferences(),
                                  !renderer.engine().isDiagnosticNeeded(),
                                  storedTechnique(renderer.engine())};
    if (request.json)
        writeJson(std::cout, summary);
    else
        writeText(std::cout, summary);
    flushStandardOutput();
}

ModelSummary describe(ModelRequest const& request, Messages const& messages)
{
    Model model = loadModel(request, messages);
    ModelSummary summary = summarise(request.file.string(), model);
    summary.posedBy = findAnimation(model, request, messages);
    summary.seconds = request.seconds;

    ModelScene scene(std::move(model), SceneOptions());
    scene.pose(summary.posedBy, summary.seconds);
    summary.bounds = scene.surfaceBounds();
    return summary;
}

/// What is said of the models, one after the other.
class Answers {
public:
    explicit Answers(InfoRequest const& request) : asJson_(request.json), several_(request.files.size() > 1)
    {
    }

    void add(ModelSummary const& summary)
    {
        if (asJson_)
            return add(asJson(summary));
        std::cout << (isFirst_ ? "" : "\n");
        isFirst_ = false;
        writeText(std::cout, summary);
        flushStandardOutput();
    }

    /// In JSON alone; people read the message.
    void addFailure(std::filesystem::path const& file, std::string_view kind, std::string_view message)
    {
        if (asJson_)
            add(failureAsJson(file.string(), kind, message));
    }

private:
    void add(Json const& json) const
    {
        (several_ ? writeLine : writeLines)(std::cout, json);
        flushStandardOutput();
    }

    bool asJson_;
    bool several_; ///< an object a line
    bool isFirst_ = true;
};

void describeModels(InfoRequest const& request, Messages const& messages)
{
    Answers answers(request);
    std::size_t const count = request.files.size();
    std::size_t failures = 0;
    ModelRequest model = request.model;
    for (std::filesystem::path const& file : request.files) {
        model.file = file;
        try {
            answers.add(describe(model, messages));
        } catch (ImportError const& error) {
            answers.addFailure(file, nameOf(error.failure()), error.what());
            if (count == 1)
                throw;
            printError(error.what());
            ++failures;
        } catch (UsageError const& error) {
            if (count == 1)
                throw;
            answers.addFailure(file, "usage", error.what());
            printError(error.what());
            ++failures;
        }
    }
    if (failures != 0)
        throw InfoFailure(std::to_string(failures) + " of " + std::to_string(count) +
                          " models could not be described");
}

} // namespace

void run(InfoRequest const& request, Messages const& messages)
{
    if (!chooseDevice(request.device))
        return;
    if (request.gpu)
        describeGraphics(request);
    else
        describeModels(request, messages);
}

} // namespace sgview
