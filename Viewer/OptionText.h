#pragma once

#include "Utilities/Color.h"
#include "Viewer/Picture.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sgview {

// How option values are written. All operations throw UsageError, which quotes the text and says what is
// wanted.

/// "1024x768": pixels, 1 to PictureSize::largestSide each.
[[nodiscard]] PictureSize parseSize(std::string_view text);

/// "#rrggbb": two hexadecimal digits each for red, green and blue.
[[nodiscard]] Color parseColor(std::string_view text);

/// Two colours with a comma between them.
[[nodiscard]] std::pair<Color, Color> parseColorPair(std::string_view text);

/// A decimal number from `least` to `most`.
[[nodiscard]] double parseNumber(std::string_view text, double least, double most);

/// A whole decimal number from `least` to `most`.
[[nodiscard]] std::uint32_t parseWhole(std::string_view text, std::uint32_t least, std::uint32_t most);

/// Names of log channels with commas between them.
[[nodiscard]] std::vector<std::string> parseChannels(std::string_view text);

} // namespace sgview
