#include "Viewer/Output/PictureResolver.h"

#include <algorithm>
#include <array>

namespace sgview {

namespace {

using Sum = std::array<std::int64_t, 3>;

constexpr std::int64_t full = 255;

/// Of a square of pixels.
Sum sumOf(Picture const& drawn, int left, int top, int side)
{
    Sum sum{};
    for (int y = top; y < top + side; ++y) {
        std::uint8_t const* pixel =
            &drawn.pixels[4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(drawn.size.width) +
                               static_cast<std::size_t>(left))];
        for (int x = 0; x < side; ++x, pixel += 4)
            for (std::size_t i = 0; i < sum.size(); ++i)
                sum[i] += pixel[i];
    }
    return sum;
}

std::uint8_t rounded(std::int64_t dividend, std::int64_t divisor)
{
    return static_cast<std::uint8_t>(std::clamp((dividend + divisor / 2) / divisor, std::int64_t{0}, full));
}

} // namespace

/// \param resolve  is given the left upper corner of the square drawn for a pixel, and the pixel to set
template <typename Resolve>
void PictureResolver::forEachPixel(Corner const& corner, PictureSize drawn, Resolve resolve)
{
    int const right = std::min(picture_.size.width, corner.x + drawn.width / supersample_);
    int const bottom = std::min(picture_.size.height, corner.y + drawn.height / supersample_);
    for (int y = corner.y; y < bottom; ++y)
        for (int x = corner.x; x < right; ++x)
            resolve((x - corner.x) * supersample_, (y - corner.y) * supersample_,
                    &picture_.pixels[4 * (static_cast<std::size_t>(y) *
                                              static_cast<std::size_t>(picture_.size.width) +
                                          static_cast<std::size_t>(x))]);
}

void PictureResolver::addOpaque(Corner const& corner, Picture const& drawn)
{
    std::int64_t const count = std::int64_t{supersample_} * supersample_;
    forEachPixel(corner, drawn.size, [&](int left, int top, std::uint8_t* pixel) {
        Sum const sum = sumOf(drawn, left, top, supersample_);
        for (std::size_t i = 0; i < sum.size(); ++i)
            pixel[i] = rounded(sum[i], count);
        pixel[3] = full;
    });
}

void PictureResolver::addTransparent(Corner const& corner, Picture const& onBlack, Picture const& onWhite)
{
    std::int64_t const count = std::int64_t{supersample_} * supersample_;
    forEachPixel(corner, onBlack.size, [&](int left, int top, std::uint8_t* pixel) {
        Sum const black = sumOf(onBlack, left, top, supersample_);
        Sum const white = sumOf(onWhite, left, top, supersample_);
        std::int64_t opacity = 3 * full * count; // of all three colours together
        for (std::size_t i = 0; i < black.size(); ++i)
            opacity -= white[i] - black[i];
        pixel[3] = rounded(opacity, 3 * count);
        for (std::size_t i = 0; i < black.size(); ++i)
            pixel[i] = pixel[3] == 0 ? std::uint8_t{0} : rounded(3 * full * black[i], opacity);
    });
}

} // namespace sgview
