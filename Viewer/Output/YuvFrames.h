#pragma once

#include "Viewer/Platform/Picture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace sgview {

// A Y4M stream, as encoders for films read it: brightness for each pixel and colour for each two by two, by
// Recommendation ITU-R BT.601 in its limited range.

/// What comes before the first frame, in one line.
/// \param rate  frames a second
[[nodiscard]] std::string yuvHeader(PictureSize size, double rate);

/// A frame, with the line that comes before it. Opacity is left out.
[[nodiscard]] std::vector<std::uint8_t> yuvFrame(Picture const& picture);

} // namespace sgview
