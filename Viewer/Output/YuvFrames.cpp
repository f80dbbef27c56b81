#include "Viewer/Output/YuvFrames.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <string_view>

namespace sgview {

namespace {

using Colour = std::array<double, 3>; // red, green, blue of 255

/// A number of frames a second as a fraction; those of television are so many in 1001 milliseconds.
std::string asFraction(double rate)
{
    constexpr double tolerance = 1e-3;
    double const slowed = rate * 1.001;
    if (std::abs(rate - std::round(rate)) > tolerance && std::abs(slowed - std::round(slowed)) < tolerance)
        return std::to_string(1000 * std::lround(slowed)) + ":1001";
    long const thousandths = std::max(1L, std::lround(1000.0 * rate));
    long const divisor = std::gcd(thousandths, 1000L);
    return std::to_string(thousandths / divisor) + ":" + std::to_string(1000 / divisor);
}

std::uint8_t rounded(double value)
{
    return static_cast<std::uint8_t>(std::lround(value));
}

std::uint8_t brightness(Colour const& c)
{
    return rounded(16.0 + (65.481 * c[0] + 128.553 * c[1] + 24.966 * c[2]) / 255.0);
}

std::uint8_t blueness(Colour const& c)
{
    return rounded(128.0 + (-37.797 * c[0] - 74.203 * c[1] + 112.0 * c[2]) / 255.0);
}

std::uint8_t redness(Colour const& c)
{
    return rounded(128.0 + (112.0 * c[0] - 93.786 * c[1] - 18.214 * c[2]) / 255.0);
}

/// Beyond an edge, the pixel at the edge.
Colour colourAt(Picture const& picture, int x, int y)
{
    auto const column = static_cast<std::size_t>(std::min(x, picture.size.width - 1));
    auto const row = static_cast<std::size_t>(std::min(y, picture.size.height - 1));
    std::uint8_t const* const pixel =
        &picture.pixels[4 * (row * static_cast<std::size_t>(picture.size.width) + column)];
    return {double(pixel[0]), double(pixel[1]), double(pixel[2])};
}

Colour meanOfFour(Picture const& picture, int x, int y)
{
    Colour mean{};
    for (int row = y; row < y + 2; ++row)
        for (int column = x; column < x + 2; ++column) {
            Colour const colour = colourAt(picture, column, row);
            for (std::size_t i = 0; i < mean.size(); ++i)
                mean[i] += colour[i] / 4.0;
        }
    return mean;
}

} // namespace

std::string yuvHeader(PictureSize size, double rate)
{
    return "YUV4MPEG2 W" + std::to_string(size.width) + " H" + std::to_string(size.height) + " F" +
           asFraction(rate) + " Ip A1:1 C420jpeg XCOLORRANGE=LIMITED\n";
}

std::vector<std::uint8_t> yuvFrame(Picture const& picture)
{
    constexpr std::string_view head = "FRAME\n";
    auto const [width, height] = picture.size;
    std::vector<std::uint8_t> frame(head.begin(), head.end());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            frame.push_back(brightness(colourAt(picture, x, y)));
    for (auto const tone : {blueness, redness})
        for (int y = 0; y < height; y += 2)
            for (int x = 0; x < width; x += 2)
                frame.push_back(tone(meanOfFour(picture, x, y)));
    return frame;
}

} // namespace sgview
