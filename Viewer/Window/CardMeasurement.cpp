#include "Viewer/Window/CardMeasurement.h"

#include <utility>

namespace sgview {

CardMeasurement::CardMeasurement(SGRenderer const& renderer, std::optional<std::filesystem::path> module)
    : renderer_(renderer), module_(std::move(module))
{
}

CardKnowledge const& CardMeasurement::knowledge()
{
    if (!knowledge_)
        knowledge_ = knowledgeOf(renderer_);
    return *knowledge_;
}

void CardMeasurement::start()
{
    if (run_)
        return;
    failure_.clear();
    isCancelled_ = false;
    run_ =
        std::make_unique<BackgroundDiagnostic>(module_, MeasuredCard{knowledge().card, videoDriverInUse()});
    step_ = run_->step();
}

void CardMeasurement::cancel()
{
    if (!run_)
        return;
    isCancelled_ = true;
    run_->cancel();
}

MeasurementNews CardMeasurement::look()
{
    if (!run_)
        return MeasurementNews::nothing;
    if (run_->isDone()) {
        finish();
        return MeasurementNews::finished;
    }
    std::string step = run_->step();
    if (step == step_)
        return MeasurementNews::nothing;
    step_ = std::move(step);
    return MeasurementNews::step;
}

void CardMeasurement::finish()
{
    std::unique_ptr<BackgroundDiagnostic> const run = std::move(run_);
    knowledge_.reset();
    try {
        SupervisedDiagnosis result = run->take();
        if (isCancelled_ && !result.endedWell()) {
            failure_ = "the run was stopped";
            return;
        }
        result_ = std::move(result);
        ++generation_;
    } catch (std::exception const& error) {
        failure_ = error.what();
    }
}

} // namespace sgview
