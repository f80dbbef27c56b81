#pragma once

#include "Utilities/Color.h"
#include "Viewer/CommandLine/Moments.h"
#include "Viewer/CommandLine/Shell.h"
#include "Viewer/Output/FrameSchedule.h"
#include "Viewer/Output/OutputName.h"
#include "Viewer/Output/PictureFormat.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/Technique.h"
#include "Viewer/Scene/CameraView.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sgview {

// How option values are written. All operations throw UsageError, which quotes the text and says what is
// wanted.

/// "1024x768": pixels, 1 to PictureSize::largestSide each, PictureSize::mostPixels in all.
[[nodiscard]] PictureSize parseSize(std::string_view text);

/// "#rrggbb": two hexadecimal digits each for red, green and blue.
[[nodiscard]] Color parseColor(std::string_view text);

/// The same, or "transparent", which is black without opacity.
[[nodiscard]] Color parseBackground(std::string_view text);

/// A colour as `parseColor` reads it.
[[nodiscard]] std::string inHex(Color const& color);

/// Two colours with a comma between them.
[[nodiscard]] std::pair<Color, Color> parseColorPair(std::string_view text);

/// A decimal number from `least` to `most`.
[[nodiscard]] double parseNumber(std::string_view text, double least, double most);

/// A whole decimal number from `least` to `most`.
[[nodiscard]] std::uint32_t parseWhole(std::string_view text, std::uint32_t least, std::uint32_t most);

/// A technique's name, or "auto", which is none.
[[nodiscard]] std::optional<Technique> parseTechnique(std::string_view text);

/// A template for the names of kept pictures: text with {model}, {date}, {time} and {number} in it.
[[nodiscard]] std::string parseScreenshotName(std::string_view text);

/// "10-19", or "7" for one frame: numbers up to FrameRange::largest, the first not after the last.
[[nodiscard]] FrameRange parseFrames(std::string_view text);

/// A template for the names of pictures, or "-".
[[nodiscard]] OutputName parseOutputName(std::string_view text);

/// "png", "webp", "rgba" or "y4m".
[[nodiscard]] PictureFormat parsePictureFormat(std::string_view text);

/// "y", "z" or "x".
[[nodiscard]] CameraView::Up parseUp(std::string_view text);

/// How many moments, in digits alone, or a list of them in seconds with commas between.
[[nodiscard]] Moments parseMoments(std::string_view text);

/// "bash", "zsh" or "fish".
[[nodiscard]] Shell parseShell(std::string_view text);

/// Names of log channels with commas between them.
[[nodiscard]] std::vector<std::string> parseChannels(std::string_view text);

} // namespace sgview
