#pragma once

#include "SceneGraph/SGRenderer.h"
#include "Viewer/Diagnosis/CardKnowledge.h"
#include "Viewer/Window/BackgroundDiagnostic.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace sgview {

/// What comes out of a look at a measurement.
enum class MeasurementNews {
    nothing,
    step,     ///< the run is at another
    finished, ///< well or not
};

/// What a window knows of its graphics card, and the run that finds out more. Needs the renderer's context
/// current.
class CardMeasurement {
public:
    CardMeasurement(SGRenderer const& renderer, std::optional<std::filesystem::path> module);

    /// What is known without a run of this window's; found out when it is first asked for, and after each
    /// run.
    [[nodiscard]] CardKnowledge const& knowledge();

    /// Begins a run, whatever is known, unless one is on.
    void start();

    /// Asks the run that is on, if any, to stop.
    void cancel();

    /// Looks how far the run is. Never waits.
    [[nodiscard]] MeasurementNews look();

    [[nodiscard]] bool isRunning() const { return run_ != nullptr; }

    /// What the run that is on is at.
    [[nodiscard]] std::string const& step() const { return step_; }

    /// Of the last run that was not cancelled; none before.
    [[nodiscard]] std::optional<SupervisedDiagnosis> const& result() const { return result_; }

    /// Why the last run could not be made, or empty.
    [[nodiscard]] std::string const& failure() const { return failure_; }

    /// Grows whenever another result takes the place of the last.
    [[nodiscard]] int generation() const { return generation_; }

private:
    void finish();

    SGRenderer const& renderer_;
    std::optional<std::filesystem::path> module_;
    std::optional<CardKnowledge> knowledge_;
    std::string step_;
    std::optional<SupervisedDiagnosis> result_;
    std::string failure_;
    int generation_ = 0;
    bool isCancelled_ = false;
    std::unique_ptr<BackgroundDiagnostic> run_;
};

} // namespace sgview
