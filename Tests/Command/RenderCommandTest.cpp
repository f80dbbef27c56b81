#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"
#include "Viewer/Platform/PngWriter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <set>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr Rgb white{255, 255, 255};

class RenderCommand : public SgviewTest {
protected:
    /// Draws small, and reads the picture back.
    [[nodiscard]] sgview::Picture draw(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.end(), {"--size", "200x150"});
        static_cast<void>(render("drawn.png", arguments));
        return readPng(folder / "drawn.png");
    }
};

std::size_t countPixels(sgview::Picture const& picture, auto const& predicate)
{
    std::size_t count = 0;
    for (int y = 0; y < picture.size.height; ++y)
        for (int x = 0; x < picture.size.width; ++x)
            count += predicate(pixelAt(picture, x, y)) ? 1 : 0;
    return count;
}

std::size_t countDrawn(sgview::Picture const& picture, Rgb const& background = white)
{
    return countPixels(picture, [&](Rgb const& pixel) { return pixel != background; });
}

TEST_F(RenderCommand, DrawsAModelInTheMiddleOfAWhitePicture)
{
    static_cast<void>(render("a.png", {creature()}));
    sgview::Picture const picture = readPng(folder / "a.png");
    EXPECT_EQ(picture.size, (sgview::PictureSize{1024, 768}));
    EXPECT_GT(countDrawn(picture), 20000U);
    for (int x = 0; x < 1024; ++x) {
        ASSERT_EQ(pixelAt(picture, x, 0), white);
        ASSERT_EQ(pixelAt(picture, x, 767), white);
    }
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{"a.png"});
}

TEST_F(RenderCommand, TwoRunsGiveEqualFiles)
{
    std::vector<std::string> const arguments{creature(), "--animation", "swim", "--time", "0.3"};
    EXPECT_EQ(render("a.png", arguments), render("b.png", arguments));
}

TEST_F(RenderCommand, AnotherMomentGivesAnotherPose)
{
    sgview::Picture const first = draw({creature(), "--animation", "swim", "--time", "0.1"});
    sgview::Picture const second = draw({creature(), "--animation", "swim", "--time", "0.7"});
    EXPECT_GT(countMismatches(first, second), 200U);
}

TEST_F(RenderCommand, AnimationByNameAndByIndex)
{
    EXPECT_EQ(render("a.png", {creature(), "--animation", "look", "--time", "0.5"}),
              render("b.png", {creature(), "--animation", "1", "--time", "0.5"}));
    EXPECT_NE(contentOf("a.png"), render("c.png", {creature(), "--animation", "0", "--time", "0.5"}));
}

TEST_F(RenderCommand, PastTheEndOfAnAnimationTheEndHolds)
{
    EXPECT_EQ(render("a.png", {testModel("rigid.gltf"), "--animation", "lift", "--time", "2"}),
              render("b.png", {testModel("rigid.gltf"), "--animation", "lift", "--time", "1e6"}));
}

TEST_F(RenderCommand, Sizes)
{
    for (auto const& [text, size] :
         {std::pair("1x1", sgview::PictureSize{1, 1}), std::pair("333x77", sgview::PictureSize{333, 77}),
          std::pair("2600x3", sgview::PictureSize{2600, 3})}) {
        static_cast<void>(render("a.png", {creature(), "--size", text}));
        EXPECT_EQ(readPng(folder / "a.png").size, size);
    }
}

TEST_F(RenderCommand, Background)
{
    sgview::Picture const picture = draw({creature(), "--background", "#2040fE"});
    EXPECT_EQ(pixelAt(picture, 0, 0), (Rgb{0x20, 0x40, 0xfe}));
    EXPECT_EQ(countDrawn(picture, {0x20, 0x40, 0xfe}), countDrawn(draw({creature()})));
}

TEST_F(RenderCommand, ViewAngles)
{
    sgview::Picture const usual = draw({creature()});
    EXPECT_EQ(draw({creature(), "--azimuth", "30", "--elevation", "20", "--zoom", "1"}).pixels, usual.pixels);
    EXPECT_GT(countMismatches(draw({creature(), "--azimuth", "-120"}), usual), 500U);
    EXPECT_GT(countMismatches(draw({creature(), "--elevation=-45"}), usual), 500U);
    EXPECT_EQ(draw({creature(), "--azimuth", "-330"}).pixels, usual.pixels);
}

TEST_F(RenderCommand, ZoomMagnifies)
{
    auto const usual = static_cast<double>(countDrawn(draw({testModel("rigid.gltf")})));
    auto const half = static_cast<double>(countDrawn(draw({testModel("rigid.gltf"), "--zoom", "0.5"})));
    EXPECT_NEAR(half / usual, 0.25, 0.02);
}

TEST_F(RenderCommand, WireframeCoversLess)
{
    std::size_t const solid = countDrawn(draw({testModel("rigid.gltf")}));
    std::size_t const wires = countDrawn(draw({testModel("rigid.gltf"), "--wireframe"}));
    EXPECT_LT(wires, solid / 2);
    EXPECT_GT(wires, 100U);
}

TEST_F(RenderCommand, AModelWithoutAnimationsIsDrawnAtRestWithAWarning)
{
    std::string const still = render("still.png", {testModel("lines.gltf")});
    Outcome const asked =
        run({"render", testModel("lines.gltf"), "--animation", "0", "--output", "asked.png"});
    EXPECT_EQ(asked.status, 0);
    EXPECT_EQ(asked.errors,
              "sgview: warning: no animation in " + testModel("lines.gltf") + "; taken in its rest pose\n");
    EXPECT_EQ(contentOf("asked.png"), still);
}

TEST_F(RenderCommand, UnlitHasNoShades)
{
    auto const shades = [&](sgview::Picture const& picture) {
        std::set<std::array<int, 3>> colours;
        for (int y = 0; y < picture.size.height; ++y)
            for (int x = 0; x < picture.size.width; ++x) {
                Rgb const pixel = pixelAt(picture, x, y);
                colours.insert({pixel.r, pixel.g, pixel.b});
            }
        return colours.size();
    };
    EXPECT_GT(shades(draw({testModel("skin16bit.gltf")})), 50U);
    EXPECT_EQ(shades(draw({testModel("skin16bit.gltf"), "--unlit"})), 3U) << "background and two materials";
}

TEST_F(RenderCommand, ColorizeTintsTextures)
{
    auto const isRed = [](Rgb const& pixel) { return pixel.r > pixel.g + 20 && pixel.g == pixel.b; };
    sgview::Picture const usual = draw({creature()});
    EXPECT_LT(countPixels(usual, isRed), countDrawn(usual) / 10);
    sgview::Picture const tinted = draw({creature(), "--colorize", "#ff0000,#400000"});
    EXPECT_GT(countPixels(tinted, isRed), countDrawn(tinted) * 8 / 10);
}

TEST_F(RenderCommand, MirrorTurnsTheModelOver)
{
    sgview::Picture const usual = draw({creature(), "--azimuth", "0", "--elevation", "0"});
    sgview::Picture const mirrored = draw({creature(), "--azimuth", "180", "--elevation", "0", "--mirror"});
    // Seen from behind, a point reflection looks like the front upside down.
    sgview::Picture turned(usual.size);
    for (int y = 0; y < usual.size.height; ++y)
        std::copy_n(usual.pixels.begin() + (usual.size.height - 1 - y) * usual.size.width * 4,
                    usual.size.width * 4, turned.pixels.begin() + y * usual.size.width * 4);
    auto const isDrawn = [](sgview::Picture const& picture, int x, int y) {
        return pixelAt(picture, x, y) != white;
    };
    std::size_t outline = 0;
    for (int y = 0; y < usual.size.height; ++y)
        for (int x = 0; x < usual.size.width; ++x)
            outline += isDrawn(turned, x, y) != isDrawn(mirrored, x, y) ? 1 : 0;
    EXPECT_LT(outline, countDrawn(usual) / 20);
    EXPECT_GT(countMismatches(usual, mirrored), countDrawn(usual) / 4);
}

/// A crate whose picture lies elsewhere.
class TextureFolder : public RenderCommand {
protected:
    TextureFolder()
    {
        std::filesystem::create_directories(folder / "model");
        std::filesystem::create_directories(folder / "pictures");
        writeFile("model/square.obj",
                  "mtllib square.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvt 0 0\nvt 1 0\n"
                  "vt 1 1\nvt 0 1\nvn 0 0 1\nusemtl painted\nf 1/1/1 2/2/1 3/3/1 4/4/1\n");
        writeFile("model/square.mtl", "newmtl painted\nKd 1 1 1\nmap_Kd red.png\n");
        sgview::Picture red({4, 4});
        for (std::size_t i = 0; i < red.pixels.size(); i += 4)
            red.pixels[i] = 255;
        sgview::writePng(folder / "pictures" / "red.png", red);
    }
};

TEST_F(TextureFolder, MissingPictureIsAWarningInOneLine)
{
    Outcome const outcome = run({"render", "model/square.obj", "--output", "a.png"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, StartsWith("sgview: warning: "));
    EXPECT_THAT(outcome.errors, HasSubstr("red.png"));
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1);

    static_cast<void>(render("quiet.png", {"model/square.obj", "--quiet"}));
    EXPECT_EQ(contentOf("quiet.png"), contentOf("a.png"));
}

TEST_F(TextureFolder, NamedFolderIsLookedIn)
{
    auto const isRed = [](Rgb const& pixel) { return pixel.r > 100 && pixel.g == 0 && pixel.b == 0; };
    std::filesystem::create_directories(folder / "empty");
    sgview::Picture const picture = draw(
        {"model/square.obj", "--texture-folder", "empty", "--texture-folder", "pictures", "--azimuth", "0"});
    EXPECT_GT(countPixels(picture, isRed), 2000U);
}

TEST_F(RenderCommand, FileWithADashAndArgumentsWithEqualsSigns)
{
    std::filesystem::copy_file(testModel("lines.gltf"), folder / "-lines.gltf");
    EXPECT_EQ(runWell({"render", "--size=100x100", "--output=a.png", "--", "-lines.gltf"}), "");
    EXPECT_EQ(readPng(folder / "a.png").size, (sgview::PictureSize{100, 100}));
}

TEST_F(RenderCommand, LogChannels)
{
    Outcome const both = run({"render", creature(), "--output", "a.png", "--log", "opengl,error"});
    EXPECT_EQ(both.status, 0);
    EXPECT_THAT(both.errors, StartsWith("opengl: GL_VERSION: "));
    EXPECT_EQ(runWell({"render", creature(), "--output", "a.png", "--log", "error"}), "");
}

TEST_F(RenderCommand, ReplacesTheOutputWhole)
{
    writeFile("a.png", "old");
    EXPECT_EQ(render("a.png", {creature()}), render("b.png", {creature()}));
}

TEST_F(RenderCommand, LimitsCanBeRaised)
{
    EXPECT_EQ(render("a.png", {creature(), "--memory-limit", "2048", "--time-limit", "30"}),
              render("b.png", {creature()}));
}

} // namespace
