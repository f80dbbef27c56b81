#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

/// Pictures such as the graphics diagnostic reads back, pixel by pixel from the lower left corner.
namespace RendererTesting {

using Picture = std::vector<unsigned char>;

inline constexpr std::size_t pictureSide = 512;
inline constexpr std::size_t picturePixels = 262'144;
inline constexpr std::size_t pictureBytes = 1'048'576;

/// Dark, but for those pixels that `isWhite` is true for, by their number.
template <typename Predicate>
[[nodiscard]] Picture pictureWhere(Predicate isWhite)
{
    constexpr std::array<unsigned char, 4> white{255, 255, 255, 255};
    constexpr std::array<unsigned char, 4> dark{40, 60, 80, 255};
    Picture picture(pictureBytes);
    for (std::size_t pixel = 0; pixel < picturePixels; ++pixel)
        std::ranges::copy(isWhite(pixel) ? white : dark,
                          picture.begin() + static_cast<std::ptrdiff_t>(4 * pixel));
    return picture;
}

[[nodiscard]] inline Picture pictureWithWhite(std::size_t pixels)
{
    return pictureWhere([=](std::size_t pixel) { return pixel < pixels; });
}

/// The lower half is white.
[[nodiscard]] inline Picture restPicture()
{
    return pictureWithWhite(picturePixels / 2);
}

/// The left half is white: half of the pixels are as at rest.
[[nodiscard]] inline Picture bentPicture()
{
    return pictureWhere([](std::size_t pixel) { return pixel % pictureSide < pictureSide / 2; });
}

/// The first pixels, each changed in one channel.
[[nodiscard]] inline Picture changed(Picture picture, std::size_t pixels, int difference,
                                     std::size_t channel = 1)
{
    for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
        unsigned char& value = picture[4 * pixel + channel];
        value = static_cast<unsigned char>(value > 127 ? value - difference : value + difference);
    }
    return picture;
}

} // namespace RendererTesting
