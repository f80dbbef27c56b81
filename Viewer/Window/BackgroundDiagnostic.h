#pragma once

#include "Viewer/Diagnosis/DiagnosticSupervisor.h"
#include "Viewer/Process/HeldSignals.h"

#include <atomic>
#include <exception>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace sgview {

/// A supervised run of the graphics diagnostic that goes on in a thread of its own. The destructor stops it
/// and waits: no process is left then, and no journal of a run that went well so far. Lives on the main
/// thread, where it holds back the signals that end programs; one that comes ends the run, and takes effect
/// when this goes.
class BackgroundDiagnostic {
public:
    BackgroundDiagnostic(std::optional<std::filesystem::path> module, MeasuredCard card);

    [[nodiscard]] bool isDone() const { return done_; }

    /// What the run is at.
    [[nodiscard]] std::string step() const;

    /// Asks the run to stop; it is done a moment later.
    void cancel() { thread_.request_stop(); }

    /// What came of it, once it is done.
    /// \throws DiagnosticBusy, std::system_error
    [[nodiscard]] SupervisedDiagnosis take();

private:
    void run(std::stop_token const& stop);
    [[nodiscard]] SupervisedDiagnosis measure(std::stop_token const& stop);
    void say(std::string step);

    HeldSignals signals_; ///< inherited by thread_
    std::optional<std::filesystem::path> module_;
    MeasuredCard card_;
    std::string step_; ///< guarded by mutex_
    mutable std::mutex mutex_;
    std::atomic<bool> done_ = false;
    std::optional<SupervisedDiagnosis> result_; ///< what thread_ leaves, as is failure_
    std::exception_ptr failure_;
    std::jthread thread_;
};

} // namespace sgview
