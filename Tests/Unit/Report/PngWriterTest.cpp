#include "Viewer/Platform/PngWriter.h"

#include "Viewer/Platform/PngEncoder.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using sgview::Picture;
using Bytes = std::vector<std::uint8_t>;

Picture gradient()
{
    Picture picture({30, 20});
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        picture.pixels[i] = static_cast<std::uint8_t>(i * 7);
    return picture;
}

TEST(PngWriter, WritesWhatItEncodes)
{
    std::filesystem::path const file =
        std::filesystem::temp_directory_path() / ("PngWriterTest." + std::to_string(::getpid()) + ".png");
    sgview::writePng(file, gradient());
    std::ifstream stream(file, std::ios::binary);
    Bytes const written(std::istreambuf_iterator<char>(stream), {});
    std::filesystem::remove(file);
    EXPECT_EQ(written, sgview::encodePng(gradient()));
}

TEST(PngWriter, EncodesThePicturesOwnSize)
{
    Bytes const png = sgview::encodePng(gradient());
    ASSERT_GT(png.size(), 24U);
    // Signature, the header's length and name, width, height (PNG, 5.2 and 11.2.2).
    EXPECT_EQ(Bytes(png.begin(), png.begin() + 24),
              (Bytes{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0, 0, 13,
                     'I',  'H', 'D', 'R', 0,    0,    0,    30,   0, 0, 0, 20}));
    EXPECT_THAT(Bytes(png.end() - 8, png.end() - 4), testing::ElementsAre('I', 'E', 'N', 'D'));
}

TEST(PngWriter, LeavesOpacityOut)
{
    Picture opaque = gradient();
    for (std::size_t i = 3; i < opaque.pixels.size(); i += 4)
        opaque.pixels[i] = 255;
    EXPECT_EQ(sgview::encodePng(opaque), sgview::encodePng(gradient()));
    opaque.pixels[0] ^= 1;
    EXPECT_NE(sgview::encodePng(opaque), sgview::encodePng(gradient()));
}

} // namespace
