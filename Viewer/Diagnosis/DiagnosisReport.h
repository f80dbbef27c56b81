#pragma once

#include "Viewer/Diagnosis/DiagnosticSupervisor.h"

#include <chrono>
#include <iosfwd>
#include <string>
#include <string_view>

namespace sgview {

/// Writes a run of the graphics diagnostic as one HTML page for people. The page is well-formed XML, needs no
/// script and refers to nothing outside itself; equal runs at equal times give equal bytes.
/// A run without a verdict is reported as far as it got; `ending` is what is known of its end, as whole
/// sentences ("The process crashed (signal 11). ..."), and may be empty.
/// \param written  the date that the page bears, beside the version of sgview
void writeReport(std::ostream& out, Diagnosis const& diagnosis, std::string_view ending,
                 std::chrono::system_clock::time_point written);

/// The page on a run, whatever its end.
[[nodiscard]] std::string reportOn(SupervisedDiagnosis const& run);

} // namespace sgview
