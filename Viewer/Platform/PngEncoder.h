#pragma once

#include "Viewer/Platform/Picture.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace sgview {

/// What a picture says of itself: keywords of 1 to 79 characters of ASCII, each with a text.
using PictureNotes = std::vector<std::pair<std::string, std::string>>;

/// A picture as a PNG file of 8 bits a colour, with notes as text chunks before its pixels. Equal pictures
/// with equal notes give equal bytes.
/// \param transparent  with the picture's opacity
/// \throws OutputError  where the memory for it is lacking
[[nodiscard]] std::vector<std::uint8_t> encodePng(Picture const& picture, bool transparent = false,
                                                  PictureNotes const& notes = {});

} // namespace sgview
