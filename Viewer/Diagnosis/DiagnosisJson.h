#pragma once

#include "Viewer/Diagnosis/DiagnosticSupervisor.h"

#include <iosfwd>
#include <optional>

namespace sgview {

/// All of a run but the pictures' pixels, as one JSON object: what the run measured, how it ended, and the
/// journal that it left.
void writeJson(std::ostream& stream, SupervisedDiagnosis const& run,
               std::optional<JournalEntry> const& journal);

} // namespace sgview
