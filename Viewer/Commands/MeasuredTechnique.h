#pragma once

#include "Viewer/CommandLine/Messages.h"
#include "Viewer/Diagnosis/DiagnosticGate.h"
#include "Viewer/Diagnosis/DiagnosticSupervisor.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <filesystem>
#include <optional>

namespace sgview {

/// The technique that the graphics diagnostic found best for the card in use. Where no stored verdict holds,
/// measures first, or waits for another sgview that does. After a run that died it is the plain one, with a
/// warning, and no run is made; likewise where the OpenGL in use lacks what was found.
[[nodiscard]] ChosenTechnique measuredTechnique(SGRenderer const& renderer,
                                                std::optional<std::filesystem::path> const& module,
                                                Progress& progress, Messages const& messages);

/// Finds the technique that was asked for, or else the one above. Refers to the messages.
[[nodiscard]] TechniqueFinder techniqueFinder(std::optional<Technique> asked,
                                              std::optional<std::filesystem::path> module,
                                              Messages const& messages);

/// Measures, and says how far it is. What the run logs goes to this process's log.
[[nodiscard]] SupervisedDiagnosis runDiagnostic(DiagnosticOptions const& options, Progress& progress);

/// Locks others out, and says what it waits for. Drops what this process knew of its preferences: others may
/// have stored a verdict meanwhile.
/// \throws DiagnosticBusy
[[nodiscard]] std::unique_ptr<FileLock> lockOut(std::optional<DiagnosticJournal>& journal,
                                                Progress& progress);

} // namespace sgview
