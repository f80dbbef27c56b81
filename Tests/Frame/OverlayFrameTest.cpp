#include "Tests/Frame/FrameRenderer.h"
#include "Viewer/Overlay/InfluenceRamp.h"
#include "Viewer/Overlay/SceneAppearance.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace sgview;

namespace {

constexpr int side = FrameRenderer::side;
Vector3 const up(0.0, 1.0, 0.0);

/// A square from (-1, -1) to (1, 1) in the plane z = 0, held by a bone above more and more. The bone stands
/// behind it.
Model makeBanner()
{
    Model model;
    model.nodes.resize(3);
    model.nodes[0].surfaces = {0};
    model.nodes[1].parent = 0;
    model.nodes[1].name = "lower";
    model.nodes[1].translation = Vector3(0, -0.5, -0.5);
    model.nodes[2].parent = 1;
    model.nodes[2].name = "upper";
    model.nodes[2].translation = Vector3(0, 1, 0);
    model.materials.emplace_back();
    ModelSurface surface;
    surface.positions = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
    surface.normals.assign(4, Vector3(0, 0, 1));
    surface.facets = {0, 1, 2, 0, 2, 3};
    surface.skin = 0;
    surface.influenceOffsets = {0, 1, 2, 3, 4};
    surface.influences = {{0, 1.0}, {0, 1.0}, {1, 1.0}, {1, 1.0}};
    model.surfaces.push_back(surface);
    ModelSkin skin;
    skin.bones = {{1, Matrix::translationMatrix(Vector3(0, 0.5, 0.5))},
                  {2, Matrix::translationMatrix(Vector3(0, -0.5, 0.5))}};
    model.skins.push_back(skin);
    return model;
}

struct OverlayFrame : testing::Test {
    ModelScene scene{makeBanner(), {}};
    SceneAppearance appearance{scene};
    DisplayOptions options;

    OverlayFrame()
    {
        options.background = {1.0F, 1.0F, 1.0F, 1.0F};
        // The square fills the picture, but for a rim.
        Matrix const view = Matrix::translationMatrix(Vector3(0, 0, -10));
        scene.setCamera(make_smart<CameraBase>(view, Matrix::orthographic(-1.25, 1.25, -1.25, 1.25, 1, 20),
                                               quarl::Rect<int>{0, 0, side, side}),
                        {0, 0, -1});
    }

    Picture draw()
    {
        appearance.update(options, up, 1.0);
        return FrameRenderer::draw(scene.root());
    }

    /// The pixel that shows a place of the square's plane.
    static std::uint8_t const* pixelAt(Picture const& picture, double x, double y)
    {
        auto const column = static_cast<std::size_t>((x / 1.25 + 1.0) / 2.0 * side);
        auto const row = static_cast<std::size_t>((1.0 - y / 1.25) / 2.0 * side);
        return picture.pixels.data() + 4 * (row * side + column);
    }
};

int distance(std::uint8_t const* pixel, Color const& color)
{
    int largest = 0;
    for (std::size_t i = 0; i < 3; ++i)
        largest =
            std::max(largest, std::abs(pixel[i] - static_cast<int>(std::lround(255.0F * color.data()[i]))));
    return largest;
}

TEST_F(OverlayFrame, InfluenceMapShowsWeightsInTheRampsColours)
{
    options.influences = true;
    options.unlit = true; // the ramp's own colours
    appearance.influences().choose(1);
    Picture const picture = draw();
    for (double const weight : {0.05, 0.15, 0.35, 0.6, 0.85, 0.95})
        for (double const x : {-0.8, 0.1, 0.8})
            EXPECT_LT(distance(pixelAt(picture, x, 2.0 * weight - 1.0), influenceColor(weight)), 8) << weight;
}

TEST_F(OverlayFrame, InfluenceMapHasALineAtEachQuarter)
{
    options.influences = true;
    options.unlit = true;
    appearance.influences().choose(1);
    Picture const picture = draw();
    for (double const weight : {0.25, 0.5, 0.75}) {
        int nearest = 255;
        for (double const shift : {-0.01, 0.0, 0.01})
            nearest = std::min(nearest, distance(pixelAt(picture, 0.3, 2.0 * weight - 1.0 + shift),
                                                 influenceLineColor(weight)));
        EXPECT_LT(nearest, 80) << weight;
    }
}

TEST_F(OverlayFrame, SkeletonIsSeenThroughTheModel)
{
    Picture const before = draw();
    options.skeleton = true;
    Picture const after = draw();
    std::uint8_t const* const bone = pixelAt(after, 0.0, 0.0);
    std::uint8_t const* const surface = pixelAt(before, 0.0, 0.0);
    EXPECT_FALSE(std::equal(bone, bone + 3, surface)) << "the bone lies behind the square";
    EXPECT_TRUE(
        std::equal(pixelAt(after, 0.7, 0.0), pixelAt(after, 0.7, 0.0) + 3, pixelAt(before, 0.7, 0.0)));
}

TEST_F(OverlayFrame, NothingIsLeftInThePicture)
{
    Picture const before = draw();
    for (bool DisplayOptions::*const option :
         {&DisplayOptions::wireframe, &DisplayOptions::unlit, &DisplayOptions::skeleton,
          &DisplayOptions::axes, &DisplayOptions::influences}) {
        options.*option = true;
        EXPECT_NE(draw().pixels, before.pixels);
        options.*option = false;
        EXPECT_EQ(draw().pixels, before.pixels);
    }
}

TEST_F(OverlayFrame, APartIsHiddenAndShownAgain)
{
    Picture const before = draw();
    scene.instance().setShown(0, false);
    EXPECT_EQ(distance(pixelAt(draw(), 0.0, 0.0), {1.0F, 1.0F, 1.0F, 1.0F}), 0);
    scene.instance().setShown(0, true);
    EXPECT_EQ(draw().pixels, before.pixels);
}

TEST_F(OverlayFrame, EditedMaterialsAndLightsShowAtOnce)
{
    Picture const before = draw();
    MaterialLook look = appearance.materials().look(0);
    look.material.diffuse = {0.0F, 0.0F, 0.0F, 1.0F};
    look.material.ambient = {0.0F, 0.0F, 0.0F, 1.0F};
    look.material.emissive = {0.0F, 1.0F, 0.0F, 1.0F};
    appearance.materials().edit(0, look);
    EXPECT_EQ(distance(pixelAt(draw(), 0.0, 0.0), {0.0F, 1.0F, 0.0F, 1.0F}), 0);
    appearance.materials().reset(0);
    EXPECT_EQ(draw().pixels, before.pixels);
    scene.lights().front().diffuse = {1.0F, 0.0F, 0.0F, 1.0F};
    scene.lights().front().direction = {0, 0, 1};
    scene.lights().front().ambient = {0.0F, 0.0F, 0.0F, 1.0F};
    Picture const red = draw();
    EXPECT_GT(pixelAt(red, 0.0, 0.0)[0], 190);
    EXPECT_LT(pixelAt(red, 0.0, 0.0)[1], 80);
    scene.lights() = {headLight()};
    EXPECT_EQ(draw().pixels, before.pixels);
}

} // namespace
