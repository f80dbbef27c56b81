#include "Viewer/Output/PictureDrawer.h"

#include "Tests/Command/Sgview.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Unit/Utilities/TemporaryFolder.h"
#include "Utilities/Log.h"
#include "Viewer/Import/Importer.h"
#include "Viewer/Output/PictureResolver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

using sgview::Picture;
using sgview::PictureKind;

class PictureDrawer : public testing::Test {
protected:
    PictureDrawer() { Log::getInstance().disableOthers(); }
};

Picture draw(PictureKind const& kind, std::optional<int> largest, std::string const& file,
             sgview::SceneOptions const& options = {}, sgview::CameraView const& view = {})
{
    sgview::PictureDrawer drawer(kind, std::nullopt, largest);
    drawer.renderer().use(sgview::Technique::plain);
    sgview::ModelScene scene(sgview::importModel(file, {}), options);
    scene.setView(view, kind.size.width, kind.size.height);
    return drawer.draw(scene);
}

TEST_F(PictureDrawer, TilesMakeTheSamePictureButForSinglePixels)
{
    constexpr sgview::PictureSize size{301, 203};
    constexpr std::size_t pixels = 301 * 203;
    Picture const whole = draw({size}, std::nullopt, creature());
    for (int const side : {40, 100, 300}) // the last ones are cut off by the picture's edges
        EXPECT_LT(countMismatches(draw({size}, side, creature()), whole), pixels / 10000) << side;
    EXPECT_EQ(draw({size}, 400, creature()).pixels, whole.pixels) << "one tile is all of it";

    sgview::SceneOptions wires;
    wires.wireframe = true;
    EXPECT_LT(countMismatches(draw({size}, 100, creature(), wires), draw({size}, {}, creature(), wires)),
              pixels / 200)
        << "lines may start anew";
}

TEST_F(PictureDrawer, TilesOfSmoothTransparentPictures)
{
    PictureKind const kind{{150, 101}, 3, true};
    EXPECT_LT(countMismatches(draw(kind, 100, creature()), draw(kind, {}, creature())), 5U);
}

/// Two half-transparent sheets, one behind the other and to the right, before nothing.
class Sheets : public PictureDrawer {
protected:
    Sheets()
    {
        writeFile(folder_ / "sheets.obj", "mtllib sheets.mtl\n"
                                          "v -1 -1 0\nv 0.5 -1 0\nv 0.5 1 0\nv -1 1 0\n"
                                          "v -0.5 -1 -0.001\nv 1 -1 -0.001\nv 1 1 -0.001\nv -0.5 1 -0.001\n"
                                          "usemtl near\nf 1 2 3 4\nusemtl far\nf 5 6 7 8\n");
        writeFile(folder_ / "sheets.mtl", "newmtl near\nKd 1 0 0\nKa 1 0 0\nd 0.5\n"
                                          "newmtl far\nKd 0 0 1\nKa 0 0 1\nd 0.25\n");
    }

    [[nodiscard]] std::array<int, 4> pixel(Picture const& picture, int x, int y) const
    {
        std::array<int, 4> components{};
        std::copy_n(picture.pixels.begin() + 4 * (y * picture.size.width + x), 4, components.begin());
        return components;
    }
    [[nodiscard]] std::string file() const { return (folder_ / "sheets.obj").string(); }

private:
    TemporaryFolder folder_;
};

void expectNear(std::array<int, 4> const& pixel, std::array<double, 4> const& expected, double tolerance)
{
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(pixel[i], expected[i], tolerance) << "component " << i;
}

TEST_F(Sheets, OpacityIsThatOfWhatIsBlended)
{
    sgview::SceneOptions unlit;
    unlit.unlit = true;
    constexpr sgview::CameraView front{0.0, 0.0, 1.0};
    Picture const picture = draw({{200, 200}, 1, true}, {}, file(), unlit, front);
    expectNear(pixel(picture, 2, 2), {0, 0, 0, 0}, 0);
    expectNear(pixel(picture, 30, 100), {255, 0, 0, 127.5}, 2);
    expectNear(pixel(picture, 170, 100), {0, 0, 255, 63.75}, 4); // a step of colour is four of what is drawn
    // Red of 0.5 over blue of 0.25: 1 - 0.5 * 0.75 in all, blue being 0.5 * 0.25 of it.
    constexpr double opacity = 0.625;
    expectNear(pixel(picture, 100, 100), {255 * 0.5 / opacity, 0, 255 * 0.125 / opacity, 255 * opacity}, 3);
}

TEST_F(Sheets, LaidOverABackgroundItIsThePictureWithThatBackground)
{
    sgview::SceneOptions options;
    options.background = {0.2F, 0.6F, 0.4F, 1.0F};
    for (std::string const& model : {file(), creature()}) {
        PictureKind kind{{160, 120}, 3, false};
        Picture const expected = draw(kind, {}, model, options);
        kind.transparent = true;
        Picture const clear = draw(kind, {}, model, options);
        std::array<double, 3> const ground{51, 153, 102};
        int largest = 0;
        for (std::size_t i = 0; i < clear.pixels.size(); i += 4)
            for (std::size_t c = 0; c < 3; ++c) {
                double const opacity = clear.pixels[i + 3] / 255.0;
                double const laid = clear.pixels[i + c] * opacity + ground[c] * (1.0 - opacity);
                largest = std::max(largest, static_cast<int>(std::abs(laid - expected.pixels[i + c])));
            }
        EXPECT_LE(largest, 2) << model;
    }
}

TEST_F(Sheets, SmoothEdgesHaveTheOpacityOfWhatTheyCover)
{
    sgview::SceneOptions unlit;
    unlit.unlit = true;
    Picture const large = draw({{800, 600}, 1, true}, {}, creature(), unlit);
    Picture const smooth = draw({{200, 150}, 4, true}, {}, creature(), unlit);
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 200; ++x) {
            int covered = 0;
            for (int i = 0; i < 16; ++i)
                covered += pixel(large, 4 * x + i % 4, 4 * y + i / 4)[3];
            ASSERT_NEAR(pixel(smooth, x, y)[3], covered / 16.0, 1.0) << x << ", " << y;
        }
}

TEST(PictureResolver, MeansAreRoundedToTheNearest)
{
    Picture picture({2, 1});
    Picture drawn({4, 2});
    for (std::size_t i = 0; i < 8; ++i)
        drawn.pixels[4 * i] = static_cast<std::uint8_t>(i == 0 ? 255 : i == 7 ? 2 : 0);
    sgview::PictureResolver(picture, 2).addOpaque({0, 0}, drawn);
    EXPECT_EQ(picture.pixels, (std::vector<std::uint8_t>{64, 0, 0, 255, 1, 0, 0, 255}));
}

TEST(PictureResolver, OpacityAndColourOutOfTwoBackgrounds)
{
    Picture picture({3, 1});
    Picture black({3, 1});
    Picture white({3, 1});
    black.pixels = {10, 20, 30, 9, 0, 0, 0, 9, 128, 0, 0, 9};
    white.pixels = {10, 20, 30, 9, 255, 255, 255, 9, 255, 127, 127, 9};
    sgview::PictureResolver(picture, 1).addTransparent({0, 0}, black, white);
    EXPECT_EQ(picture.pixels, (std::vector<std::uint8_t>{10, 20, 30, 255, 0, 0, 0, 0, 255, 0, 0, 128}));
}

} // namespace
