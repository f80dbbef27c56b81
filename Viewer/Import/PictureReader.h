#pragma once

#include "Viewer/Import/Model.h"

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace sgview {

/// A picture that cannot be used as a texture; what() says why.
class PictureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Which end of a picture texture coordinate v = 0 addresses.
enum class FirstRow { top, bottom };

/// Pixels from top to bottom, four bytes each: red, green, blue, alpha.
struct Pixels {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint8_t> rgba;
};

/// Decodes an image file. Its size is looked at first: 16,384 pixels a side and 256 MiB at most.
///
/// \param name  its extension tells Targa files, which have no other mark
/// \throws PictureError
[[nodiscard]] Pixels decodePicture(std::span<std::uint8_t const> content, std::string_view name);

/// Makes a texture of pixels: sides become the nearest powers of two, at most `largestSide`; alpha is kept if
/// any pixel is not opaque, and dropped also where every pixel is wholly transparent, which is how some
/// programs write pictures without alpha.
///
/// \throws PictureError  for pixels of no size
[[nodiscard]] ModelImage makeTexture(std::string name, Pixels pixels, FirstRow firstRow,
                                     std::int32_t largestSide);

} // namespace sgview
