#include "Viewer/Import/PictureReader.h"

#include "Viewer/Import/PictureScaler.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace sgview {

namespace {

/// An uncompressed Targa picture, 24 or 32 bits, rows from the bottom.
std::vector<std::uint8_t> targa(int width, int height, int bits, std::vector<std::uint8_t> const& bgra)
{
    std::vector<std::uint8_t> file(18);
    file[2] = 2;
    file[12] = static_cast<std::uint8_t>(width & 255);
    file[13] = static_cast<std::uint8_t>(width >> 8);
    file[14] = static_cast<std::uint8_t>(height & 255);
    file[15] = static_cast<std::uint8_t>(height >> 8);
    file[16] = static_cast<std::uint8_t>(bits);
    file[17] = bits == 32 ? 8 : 0;
    file.insert(file.end(), bgra.begin(), bgra.end());
    return file;
}

std::string failureOf(std::vector<std::uint8_t> const& file, char const* name)
{
    try {
        (void)decodePicture(file, name);
    } catch (PictureError const& error) {
        return error.what();
    }
    return "decoded";
}

Pixels plain(std::int32_t width, std::int32_t height, std::array<std::uint8_t, 4> const& colour)
{
    Pixels pixels{width, height, {}};
    for (std::int32_t i = 0; i < width * height; ++i)
        pixels.rgba.insert(pixels.rgba.end(), colour.begin(), colour.end());
    return pixels;
}

} // namespace

TEST(PictureReader, DecodesTopRowFirst)
{
    Pixels const pixels = decodePicture(targa(1, 2, 24, {1, 2, 3, 4, 5, 6}), "a.TGA");
    EXPECT_EQ(pixels.width, 1);
    EXPECT_EQ(pixels.height, 2);
    EXPECT_EQ(pixels.rgba, (std::vector<std::uint8_t>{6, 5, 4, 255, 3, 2, 1, 255}));
}

TEST(PictureReader, LooksAtTheSizeBeforeItDecodes)
{
    EXPECT_EQ(failureOf(targa(16385, 1, 24, {}), "a.tga"), "the picture is too big: 16385 by 1 pixels");
    EXPECT_EQ(failureOf(targa(16384, 4097, 24, {}), "a.tga"), "the picture is too big: 16384 by 4097 pixels");
    EXPECT_EQ(failureOf(targa(0, 4, 24, {1}), "a.tga"), "the picture's size cannot be read");
    std::vector<std::uint8_t> png{0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'};
    png.insert(png.end(), {0x7F, 0xFF, 0xFF, 0xFF, 0, 0, 0, 1, 8, 6, 0, 0, 0});
    EXPECT_EQ(failureOf(png, "a.png"), "the picture is too big: 2147483647 by 1 pixels");
    EXPECT_EQ(failureOf({'I', 'I', '*', 0}, "a.tif"), "a picture format that is not read");
    EXPECT_EQ(failureOf({'h', 'e', 'l', 'l', 'o'}, "a.png"), "a picture format that is not read");
    EXPECT_EQ(failureOf({}, "a.png"), "the picture is empty");
}

TEST(PictureReader, SurvivesEveryTruncation)
{
    std::vector<std::uint8_t> const whole = targa(4, 4, 32, std::vector<std::uint8_t>(64, 100));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        auto const piece = std::make_unique<std::uint8_t[]>(size);
        std::copy_n(whole.begin(), size, piece.get());
        try {
            EXPECT_EQ(decodePicture({piece.get(), size}, "a.tga").rgba.size(), 64U) << size;
        } catch (PictureError const& error) {
            EXPECT_STRNE(error.what(), "") << size;
        }
    }
}

TEST(PictureReader, PadsRowsAndDropsAlphaThatSaysNothing)
{
    ModelImage const opaque = makeTexture("a", plain(2, 2, {10, 20, 30, 255}), FirstRow::top, 64);
    EXPECT_FALSE(opaque.alpha);
    EXPECT_EQ(opaque.rows,
              (std::vector<std::uint8_t>{10, 20, 30, 10, 20, 30, 0, 0, 10, 20, 30, 10, 20, 30, 0, 0}));
    EXPECT_FALSE(makeTexture("a", plain(2, 2, {10, 20, 30, 0}), FirstRow::top, 64).alpha);
    ModelImage const open = makeTexture("a", plain(1, 1, {10, 20, 30, 128}), FirstRow::top, 64);
    EXPECT_TRUE(open.alpha);
    EXPECT_EQ(open.rows, (std::vector<std::uint8_t>{10, 20, 30, 128}));
}

TEST(PictureReader, BeginsWithTheRowThatVZeroAddresses)
{
    Pixels pixels = plain(1, 2, {1, 1, 1, 255});
    pixels.rgba[0] = 9; // the top pixel
    EXPECT_EQ(makeTexture("a", pixels, FirstRow::top, 64).rows[0], 9);
    EXPECT_EQ(makeTexture("a", pixels, FirstRow::bottom, 64).rows[0], 1);
}

TEST(PictureReader, MakesSidesPowersOfTwo)
{
    struct Case {
        std::int32_t side;
        std::int32_t expected;
    };
    for (Case const& c :
         {Case{1, 1}, {2, 2}, {3, 4}, {5, 4}, {6, 8}, {300, 256}, {383, 256}, {384, 512}, {1000, 512}}) {
        ModelImage const image = makeTexture("a", plain(c.side, 1, {50, 60, 70, 255}), FirstRow::top, 512);
        EXPECT_EQ(image.width, c.expected) << c.side;
        EXPECT_EQ(image.rows[0], 50);
        EXPECT_EQ(image.rows[static_cast<std::size_t>(c.expected) * 3 - 1], 70);
    }
}

TEST(PictureScaler, KeepsHiddenColourOutOfWhatIsSeen)
{
    Pixels pixels = plain(4, 1, {255, 0, 0, 255});
    for (std::size_t i = 8; i < 16; i += 4) {
        pixels.rgba[i] = 0;
        pixels.rgba[i + 1] = 255; // green that nobody sees
        pixels.rgba[i + 3] = 0;
    }
    Pixels const small = resampled(pixels, 2, 1);
    EXPECT_EQ(small.rgba[0], 255);
    EXPECT_EQ(small.rgba[1], 0);
    EXPECT_LT(small.rgba[7], 60);
}

TEST(PictureScaler, KeepsTheMean)
{
    Pixels pixels = plain(64, 64, {0, 0, 0, 255});
    for (std::size_t i = 0; i < pixels.rgba.size(); i += 8)
        pixels.rgba[i] = 200;
    Pixels const small = resampled(pixels, 16, 16);
    for (std::size_t i = 0; i < small.rgba.size(); i += 4)
        if (i / 4 % 16 != 0 && i / 4 % 16 != 15) { // at the edges one stripe counts more
            EXPECT_NEAR(small.rgba[i], 100, 1) << i;
        }
}

} // namespace sgview
