#pragma once

#include <string>
#include <string_view>

namespace sgview {

/// ASCII letters in lower case, everything else as it is.
[[nodiscard]] std::string lowerCase(std::string_view text);

/// What follows the last dot of a file's name, in lower case; empty without a dot.
[[nodiscard]] std::string extensionOf(std::string_view name);

} // namespace sgview
