#pragma once

#include "Utilities/Color.h"
#include "Viewer/CommandLine/Moments.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/Technique.h"

#include <cstdint>
#include <optional>
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

/// A technique's name, or "auto", which is none.
[[nodiscard]] std::optional<Technique> parseTechnique(std::string_view text);

/// How many moments, in digits alone, or a list of them in seconds with commas between.
[[nodiscard]] Moments parseMoments(std::string_view text);

/// Names of log channels with commas between them.
[[nodiscard]] std::vector<std::string> parseChannels(std::string_view text);

} // namespace sgview
