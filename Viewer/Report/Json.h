#pragma once

#include <nlohmann/json.hpp>

#include <iosfwd>

namespace sgview {

/// What other programs read; members keep the order they were added in.
using Json = nlohmann::ordered_json;

// Both write ASCII: names come from files, and what is no UTF-8 becomes U+FFFD.

/// One member or element a line, indented.
void writeLines(std::ostream& stream, Json const& json);

/// All in one line.
void writeLine(std::ostream& stream, Json const& json);

} // namespace sgview
