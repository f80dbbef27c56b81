#pragma once

#include <string>
#include <string_view>

namespace sgview {

/// A text of unknown origin as UTF-8 that HTML, XML and PNG allow: each byte that is no part of a valid code,
/// and each character that these must not hold (control characters but for tab and line feed, and Unicode's
/// noncharacters), becomes U+FFFD.
[[nodiscard]] std::string asPlainText(std::string_view text);

} // namespace sgview
