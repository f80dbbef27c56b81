#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace sgview {

/// What an image file says about itself before anything is decoded.
struct PictureHeader {
    char const* type = ""; ///< "PNG", "JPG", "BMP", "GIF", "TGA", "WEBP", "PCX", or of a kind not decoded: ""
    std::int64_t width = 0;
    std::int64_t height = 0;
};

/// Reads the header of an image file; nothing if `content` is not one.
///
/// \param extension  lower case, without dot: Targa files have nothing else that tells them
[[nodiscard]] std::optional<PictureHeader> readPictureHeader(std::span<std::uint8_t const> content,
                                                             std::string_view extension);

} // namespace sgview
