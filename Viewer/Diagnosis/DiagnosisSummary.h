#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"
#include "Viewer/Diagnosis/StoredVerdict.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace sgview {

/// For people at a terminal of 80 columns: the card, rates as bars, mismatches, the verdict with its reasons.
void writeSummary(std::ostream& stream, Diagnosis const& diagnosis);

/// A stored verdict, a line a flag.
void writeVerdict(std::ostream& stream, StoredVerdict const& stored);

/// A text below a label, in 80 columns: the label takes so many of them.
void writeEntry(std::ostream& stream, std::string_view label, std::size_t labelWidth, std::string_view text);

} // namespace sgview
