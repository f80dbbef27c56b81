#pragma once

#include "Viewer/Diagnosis/DiagnosticJournal.h"
#include "Viewer/Diagnosis/MeasuringContext.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// Whether the program was started as a worker that runs the graphics diagnostic; its main function asks
/// before anything else.
[[nodiscard]] bool isDiagnosticWorker(int argc, char const* const* argv);

/// The main function of such a worker: runs the diagnostic in a context of its own, which stores the verdict
/// in the user's preferences, and sends what the run says and shows through the pipe that it was started
/// with. Keeps the journal on its way. No run is made where no context of the card can be had.
/// \return the process's exit status
int diagnosticWorkerMain(int argc, char const* const* argv);

/// The arguments that make a program such a worker, the program's own name first.
[[nodiscard]] std::vector<std::string>
diagnosticWorkerArguments(std::optional<std::filesystem::path> const& module,
                          std::optional<DiagnosticJournal> const& journal, MeasuredCard const& card);

/// What a worker sends: a byte for the kind, the content's size in four bytes, the lowest first, the content.
namespace WorkerMessage {

enum class Kind : std::uint8_t {
    card = 'C',    ///< vendor / renderer / version
    line = 'L',    ///< of the log, whatever the channel, without its end
    picture = 'P', ///< bytes as OpenGL gave them
    failure = 'F', ///< why the run could not be made
    done = 'D',    ///< nothing more to come
};

inline constexpr std::size_t headBytes = 5;
inline constexpr std::size_t mostBytes = std::size_t{4} << 20; ///< of content

} // namespace WorkerMessage

} // namespace sgview
