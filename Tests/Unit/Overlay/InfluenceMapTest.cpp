#include "Viewer/Overlay/InfluenceMap.h"
#include "Tests/Unit/Overlay/LimbModel.h"
#include "Viewer/Overlay/InfluenceRamp.h"
#include "Viewer/Scene/ModelScene.h"

#include <gtest/gtest.h>

#include <cmath>

namespace sgview {
namespace {

/// CIE 1976 L* of an sRGB colour.
double lightness(Color const& color)
{
    auto const linear = [](float value) {
        double const v = static_cast<double>(value);
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    double const y = 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
    return y > 0.008856 ? 116.0 * std::cbrt(y) - 16.0 : 903.3 * y;
}

TEST(InfluenceRamp, GetsLighterInEvenSteps)
{
    constexpr int steps = 20;
    double const whole = lightness(influenceColor(1.0)) - lightness(influenceColor(0.0));
    EXPECT_GT(whole, 60.0);
    for (int i = 0; i < steps; ++i) {
        double const step =
            lightness(influenceColor((i + 1.0) / steps)) - lightness(influenceColor(1.0 * i / steps));
        EXPECT_NEAR(step, whole / steps, 0.5 * whole / steps) << i;
    }
    EXPECT_EQ(influenceColor(-1.0), influenceColor(0.0));
    EXPECT_EQ(influenceColor(2.0), influenceColor(1.0));
}

TEST(InfluenceRamp, PictureHasALineAtEachQuarterAndTheRampElsewhere)
{
    smart_ptr<SharedImage> const ramp = influenceRamp();
    Image_base const& image = *ramp->get();
    auto const colorAt = [&image](double weight) {
        auto const column = static_cast<std::size_t>(influenceCoordinate(weight) * image.getWidth());
        unsigned char const* const pixel = image.getData() + 3 * column;
        return Color{static_cast<float>(pixel[0]) / 255.0F, static_cast<float>(pixel[1]) / 255.0F,
                     static_cast<float>(pixel[2]) / 255.0F, 1.0F};
    };
    for (double const weight : {0.25, 0.5, 0.75}) {
        EXPECT_EQ(colorAt(weight), influenceLineColor(weight));
        EXPECT_GT(std::abs(lightness(influenceLineColor(weight)) - lightness(influenceColor(weight))), 40.0);
    }
    for (double const weight : {0.0, 0.2, 0.4, 0.6, 0.9, 1.0})
        EXPECT_NEAR(colorAt(weight).g, influenceColor(weight).g, 0.01F) << weight;
}

TEST(InfluenceMap, NamesBonesAndStartsWithTheOneThatHoldsMost)
{
    Model model = makeLimb();
    model.surfaces[0].influences = {{0, 1.0}, {0, 0.4}, {1, 0.6}, {1, 1.0}};
    ModelScene scene(std::move(model), {});
    InfluenceMap const map(scene.instance());
    ASSERT_EQ(map.bones().size(), 2U);
    EXPECT_EQ(map.bones()[0].name, "upper");
    EXPECT_EQ(map.bones()[1].name, "lower");
    EXPECT_DOUBLE_EQ(map.bones()[0].hold, 1.4);
    EXPECT_DOUBLE_EQ(map.bones()[1].hold, 1.6);
    EXPECT_EQ(map.chosen(), 1U);
}

TEST(InfluenceMap, GivesEachVertexTheWeightOfTheChosenBone)
{
    ModelScene scene(makeLimb(), {});
    InfluenceMap map(scene.instance());
    auto const weights = [&map] {
        std::vector<double> across;
        for (Vector3 const& place : map.layer(0)->coordinates->get()->coordinates)
            across.push_back(place.x);
        return across;
    };
    map.choose(0);
    EXPECT_EQ(weights(),
              (std::vector{influenceCoordinate(1.0), influenceCoordinate(0.5), influenceCoordinate(0.0)}));
    map.choose(1);
    EXPECT_EQ(weights(),
              (std::vector{influenceCoordinate(0.0), influenceCoordinate(0.5), influenceCoordinate(1.0)}));
    EXPECT_FALSE(map.layer(1).has_value()) << "a part without a skin";
}

TEST(InfluenceMap, KeepsWhatRenderersHaveDerivedUntilAnotherBoneIsChosen)
{
    ModelScene scene(makeLimb(), {});
    InfluenceMap map(scene.instance());
    map.choose(0);
    smart_ptr<SharedTextureCoords> const first = map.layer(0)->coordinates;
    EXPECT_EQ(map.layer(0)->coordinates, first);
    map.choose(1);
    EXPECT_NE(map.layer(0)->coordinates.get(), first.get());
}

TEST(InfluenceMap, AModelWithoutBonesHasNone)
{
    Model model = makeLimb();
    model.nodes[0].surfaces.clear();
    model.surfaces.erase(model.surfaces.begin());
    model.nodes[3].surfaces = {0};
    model.skins.clear();
    ModelScene scene(std::move(model), {});
    InfluenceMap map(scene.instance());
    EXPECT_TRUE(map.bones().empty());
    EXPECT_FALSE(map.layer(0).has_value());
}

} // namespace
} // namespace sgview
