#pragma once

namespace sgview {

/// The report's style sheet. Holds no '<', '>' or '&', so that it stands in HTML and in XML as it is.
extern char const* const diagnosisReportStyle;

} // namespace sgview
