#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"
#include "Viewer/Diagnosis/DiagnosticJournal.h"
#include "Viewer/Diagnosis/MeasuringContext.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

struct DiagnosticOptions {
    static constexpr std::chrono::seconds usualTimeLimit{60};

    std::optional<std::filesystem::path> module;
    std::optional<DiagnosticJournal> journal;        ///< whose lock is held
    std::chrono::seconds timeLimit = usualTimeLimit; ///< without a sign of life
    std::stop_token stop;                            ///< for other threads: ends the run as a signal does
};

/// A run of the graphics diagnostic, and how it ended.
struct SupervisedDiagnosis {
    Diagnosis diagnosis; ///< as far as the run came
    std::string step;    ///< at which it ended
    std::string end;     ///< "was ended by signal 11 (Segmentation fault)"; empty where it ended well
    std::vector<std::string> lastWords; ///< on standard error, where it did not

    [[nodiscard]] bool endedWell() const { return end.empty(); }

    /// "was ended by signal 11 (Segmentation fault) while timing the vertex program"
    [[nodiscard]] std::string endInWords() const { return end + " while " + step; }

    /// The same and the last words, as whole sentences; empty where it ended well.
    [[nodiscard]] std::string ending() const;
};

/// Hears of a run as it comes.
struct DiagnosticListener {
    std::function<void(std::string const& step)> step;
    std::function<void(std::string_view line)> logLine; ///< with the channel's name in front
};

/// Runs the graphics diagnostic of a card in a child process, so that no driver can crash or hang this one.
/// The child is this same program, started anew: its main function must ask `isDiagnosticWorker` first. It
/// stores the verdict; preferences that this process has read before are out of date then.
///
/// The journal is gone after a run that ended well, and tells of any other. No process and no descriptor is
/// left when this returns. A signal that ends programs ends the run first, and leaves no journal unless the
/// run seemed to hang. Safe to call from any thread; off the main one, signals end a run only
/// where the main thread holds them back too.
/// \throws std::system_error  the system grants no process
[[nodiscard]] SupervisedDiagnosis superviseDiagnostic(DiagnosticOptions const& options,
                                                      MeasuredCard const& card,
                                                      DiagnosticListener const& listener);

} // namespace sgview
