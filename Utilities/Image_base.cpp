#include "Utilities/Image_base.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace {

constexpr int largestSide = 16384;
constexpr std::size_t rowAlignment = 4;

void checkSide(char const* name, int side)
{
    if (side < 1 || side > largestSide)
        throw std::invalid_argument("Image_base: " + std::string(name) + ' ' + std::to_string(side) +
                                    " is not within 1 to " + std::to_string(largestSide));
}

using Rgb = std::array<unsigned char, 3>;

// 255 is odd, so no quotient lies halfway between two bytes.
unsigned char mix(unsigned int first, unsigned int second, unsigned int lightness)
{
    return static_cast<unsigned char>((first * (255 - lightness) + second * lightness + 127) / 255);
}

std::array<Rgb, 256> tints(Rgb const& first, Rgb const& second)
{
    std::array<Rgb, 256> table{};
    for (unsigned int lightness = 0; lightness < table.size(); ++lightness)
        for (std::size_t i = 0; i < 3; ++i)
            table[lightness][i] = mix(first[i], second[i], lightness);
    return table;
}

unsigned int lightnessOf(unsigned char const* pixel)
{
    return (77U * pixel[0] + 150U * pixel[1] + 29U * pixel[2]) / 256U;
}

} // namespace

Image_base::Image_base(int width, int height, Format format) : width_(width), height_(height), format_(format)
{
    checkSide("width", width);
    checkSide("height", height);
    data_.resize(getRowSize() * static_cast<std::size_t>(height));
}

std::size_t Image_base::getRowSize() const
{
    auto const bytes = static_cast<std::size_t>(width_) * static_cast<std::size_t>(getNumComponents());
    return (bytes + rowAlignment - 1) / rowAlignment * rowAlignment;
}

void Image_base::colorizeFrom(Image_base const* source, unsigned char r1, unsigned char g1, unsigned char b1,
                              unsigned char r2, unsigned char g2, unsigned char b2)
{
    data_ = source->data_;
    width_ = source->width_;
    height_ = source->height_;
    format_ = source->format_;

    auto const table = tints({r1, g1, b1}, {r2, g2, b2});
    for (int y = 0; y < height_; ++y) {
        unsigned char* pixel = data_.data() + static_cast<std::size_t>(y) * getRowSize();
        for (int x = 0; x < width_; ++x, pixel += getNumComponents()) {
            Rgb const& tint = table[lightnessOf(pixel)];
            std::copy(tint.begin(), tint.end(), pixel);
        }
    }
}
