#include "Viewer/Window/BackgroundDiagnostic.h"

#include "Viewer/Diagnosis/DiagnosisLog.h"
#include "Viewer/Diagnosis/DiagnosticGate.h"

#include <utility>

namespace sgview {

BackgroundDiagnostic::BackgroundDiagnostic(std::optional<std::filesystem::path> module, MeasuredCard card)
    : module_(std::move(module)),
      card_(std::move(card)),
      step_(waitingForOthers),
      thread_([this](std::stop_token const& stop) { run(stop); })
{
}

std::string BackgroundDiagnostic::step() const
{
    std::scoped_lock const lock(mutex_);
    return step_;
}

SupervisedDiagnosis BackgroundDiagnostic::take()
{
    thread_.join();
    if (failure_)
        std::rethrow_exception(failure_);
    return std::move(*result_);
}

void BackgroundDiagnostic::run(std::stop_token const& stop)
{
    try {
        result_ = measure(stop);
    } catch (...) {
        failure_ = std::current_exception();
    }
    done_ = true;
}

SupervisedDiagnosis BackgroundDiagnostic::measure(std::stop_token const& stop)
{
    DiagnosticOptions options;
    options.module = module_;
    options.journal = DiagnosticJournal::usual();
    options.stop = stop;
    auto const lock = lockOut(options.journal, stop);
    say(DiagnosisLog().step());
    return superviseDiagnostic(options, card_,
                               {[this](std::string const& step) { say(step); }, [](std::string_view) {}});
}

void BackgroundDiagnostic::say(std::string step)
{
    std::scoped_lock const lock(mutex_);
    step_ = std::move(step);
}

} // namespace sgview
