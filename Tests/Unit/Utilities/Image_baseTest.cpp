#include "Utilities/Image_base.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <stdexcept>
#include <vector>

namespace {

using Rgb = std::array<unsigned char, 3>;

unsigned char const* pixelOf(Image_base const& image, int x, int y)
{
    return image.getData() + static_cast<std::size_t>(y) * image.getRowSize() +
           static_cast<std::size_t>(x * image.getNumComponents());
}

void fillAtRandom(Image_base& image)
{
    std::mt19937 random(7);
    for (unsigned char& byte : image.edit())
        byte = static_cast<unsigned char>(random());
}

void colorize(Image_base& target, Image_base const& source, Rgb const& first, Rgb const& second)
{
    target.colorizeFrom(&source, first[0], first[1], first[2], second[0], second[1], second[2]);
}

/// The documented formula, in floating point.
long tinted(unsigned char const* pixel, int first, int second)
{
    double const lightness = std::floor((77.0 * pixel[0] + 150.0 * pixel[1] + 29.0 * pixel[2]) / 256.0);
    return std::lround(first + (second - first) * lightness / 255.0);
}

void expectTinted(Image_base const& target, Image_base const& source, Rgb const& first, Rgb const& second)
{
    ASSERT_EQ(target.getWidth(), source.getWidth());
    ASSERT_EQ(target.getHeight(), source.getHeight());
    ASSERT_EQ(target.getFormat(), source.getFormat());
    for (int y = 0; y < source.getHeight(); ++y)
        for (int x = 0; x < source.getWidth(); ++x) {
            unsigned char const* const before = pixelOf(source, x, y);
            unsigned char const* const after = pixelOf(target, x, y);
            for (std::size_t i = 0; i < 3; ++i)
                ASSERT_EQ(after[i], tinted(before, first[i], second[i])) << x << ", " << y << ", " << i;
            if (source.getFormat() == Image_base::RGBA) {
                ASSERT_EQ(after[3], before[3]) << "alpha is kept";
            }
        }
}

} // namespace

TEST(Image_base, StartsBlackAndTransparent)
{
    Image_base const image(3, 2, Image_base::RGBA);
    EXPECT_EQ(image.getWidth(), 3);
    EXPECT_EQ(image.getHeight(), 2);
    EXPECT_TRUE(std::all_of(image.getData(), image.getData() + 24, [](unsigned char c) { return c == 0; }));
}

TEST(Image_base, IsRgbUnlessToldOtherwise)
{
    EXPECT_EQ(Image_base(1, 1).getFormat(), Image_base::RGB);
    EXPECT_EQ(Image_base(1, 1).getNumComponents(), 3);
    EXPECT_EQ(Image_base(1, 1, Image_base::RGBA).getNumComponents(), 4);
    EXPECT_EQ(static_cast<int>(Image_base::RGB), 0);
    EXPECT_EQ(static_cast<int>(Image_base::RGBA), 1);
}

TEST(Image_base, PadsRowsToFourBytes)
{
    std::array<std::size_t, 9> const rgb{4, 8, 12, 12, 16, 20, 24, 24, 28};
    for (int width = 1; width <= 9; ++width) {
        SCOPED_TRACE(width);
        Image_base image(width, 5);
        EXPECT_EQ(image.getRowSize(), rgb[static_cast<std::size_t>(width - 1)]);
        EXPECT_EQ(image.edit().size(), 5 * image.getRowSize());
        EXPECT_EQ(image.edit().data(), image.getData());
        EXPECT_EQ(Image_base(width, 5, Image_base::RGBA).getRowSize(), static_cast<std::size_t>(4 * width));
    }
}

TEST(Image_base, RefusesSidesOutOfRange)
{
    for (int const bad : {0, -1, 16385, -2147483647 - 1, 2147483647}) {
        EXPECT_THROW(Image_base(bad, 1), std::invalid_argument);
        EXPECT_THROW(Image_base(1, bad), std::invalid_argument);
    }
    EXPECT_EQ(Image_base(16384, 1).getWidth(), 16384);
    EXPECT_EQ(Image_base(1, 16384).getHeight(), 16384);
    try {
        Image_base(1, 0);
        FAIL();
    } catch (std::invalid_argument const& error) {
        EXPECT_STREQ(error.what(), "Image_base: height 0 is not within 1 to 16384");
    }
}

TEST(Image_base, TintTurnsBlackAndWhiteIntoTheTwoColours)
{
    Image_base source(2, 1);
    std::fill_n(source.edit().begin() + 3, 3, static_cast<unsigned char>(255));
    Image_base target(1, 1);
    target.colorizeFrom(&source, 10, 20, 30, 240, 130, 50);
    EXPECT_EQ((std::vector<int>(target.getData(), target.getData() + 6)),
              (std::vector<int>{10, 20, 30, 240, 130, 50}));
}

TEST(Image_base, TintIsExactForEveryGrey)
{
    Image_base source(256, 1);
    for (std::size_t i = 0; i < 768; ++i)
        source.edit()[i] = static_cast<unsigned char>(i / 3);
    std::vector<Rgb> const colours{{0, 0, 0}, {255, 255, 255}, {1, 128, 254}, {254, 127, 3}, {85, 86, 171}};
    for (Rgb const& first : colours)
        for (Rgb const& second : colours) {
            Image_base target(1, 1);
            colorize(target, source, first, second);
            expectTinted(target, source, first, second);
        }
}

TEST(Image_base, TintFromBlackToWhiteLeavesGreysAlone)
{
    Image_base source(256, 1);
    for (std::size_t i = 0; i < 768; ++i)
        source.edit()[i] = static_cast<unsigned char>(i / 3);
    Image_base target(1, 1);
    colorize(target, source, {0, 0, 0}, {255, 255, 255});
    EXPECT_TRUE(std::equal(source.getData(), source.getData() + 768, target.getData()));
}

TEST(Image_base, TintFollowsTheFormulaForEverySizeAndFormat)
{
    for (int width = 1; width <= 9; ++width)
        for (auto const format : {Image_base::RGB, Image_base::RGBA}) {
            Image_base source(width, 4, format);
            fillAtRandom(source);
            Image_base target(2, 2, Image_base::RGB);
            colorize(target, source, {200, 10, 90}, {3, 250, 91});
            expectTinted(target, source, {200, 10, 90}, {3, 250, 91});
            EXPECT_EQ(target.edit().size(), source.edit().size());
        }
}

TEST(Image_base, CanTintItself)
{
    for (auto const format : {Image_base::RGB, Image_base::RGBA}) {
        Image_base image(5, 3, format);
        fillAtRandom(image);
        Image_base const before = image;
        colorize(image, image, {1, 2, 3}, {250, 40, 70});
        expectTinted(image, before, {1, 2, 3}, {250, 40, 70});
    }
}
