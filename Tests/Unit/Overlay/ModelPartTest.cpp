#include "Tests/Unit/Overlay/LimbModel.h"
#include "Tests/Unit/Overlay/SceneWalk.h"
#include "Viewer/Scene/ModelScene.h"

#include <gtest/gtest.h>

namespace sgview {
namespace {

/// Three plain triangles, two of them on one node.
Model makeThree()
{
    Model model = makeLimb();
    model.surfaces[0] = model.surfaces[1];
    model.surfaces[0].name = "first";
    model.surfaces.push_back(model.surfaces[1]);
    model.surfaces[2].name = "last";
    model.nodes[3].surfaces = {1, 2};
    return model;
}

TEST(ModelPart, TellsWhatItIsOf)
{
    ModelScene scene(makeLimb(), {});
    ModelInstance const& instance = scene.instance();
    ASSERT_EQ(instance.partCount(), 2U);
    EXPECT_EQ(instance.part(0).name, "limb");
    EXPECT_EQ(instance.part(0).owner, 0);
    EXPECT_EQ(instance.part(0).skin, 0);
    EXPECT_EQ(instance.part(1).name, "prop");
    EXPECT_EQ(instance.part(1).owner, 3);
    EXPECT_EQ(instance.part(1).skin, none);
    EXPECT_EQ(instance.part(1).material, 1);
}

TEST(ModelPart, HiddenAndShownAgainStandsWhereItStood)
{
    ModelScene scene(makeThree(), {});
    SceneContent const before = contentOf(scene.root());
    ASSERT_EQ(before.surfaceNames(), "first prop last");
    ModelInstance& instance = scene.instance();
    instance.setShown(1, false);
    EXPECT_FALSE(instance.isShown(1));
    EXPECT_EQ(contentOf(scene.root()).surfaceNames(), "first last");
    instance.setShown(1, false);
    instance.setShown(0, false);
    instance.setShown(1, true);
    instance.setShown(0, true);
    EXPECT_TRUE(instance.isShown(1));
    EXPECT_EQ(contentOf(scene.root()).nodes, before.nodes);
}

TEST(ModelPart, IsNotCountedWhileHidden)
{
    ModelScene scene(makeLimb(), {});
    EXPECT_EQ(scene.posedVertices().size(), 6U);
    scene.instance().setShown(0, false);
    EXPECT_EQ(scene.posedVertices().size(), 3U);
    EXPECT_EQ(scene.instance().posedNormals(1).size(), 3U);
}

TEST(ModelPart, IsPosedWhileHidden)
{
    ModelScene scene(makeLimb(), {});
    scene.instance().setShown(0, false);
    scene.pose(0, 1.0);
    scene.instance().setShown(0, true);
    EXPECT_NEAR(length(scene.posedVertices()[2] - Vector3(-1, 1, 0)), 0.0, 1e-12);
}

TEST(ModelPart, IsDrawnLastWhileItIsBlended)
{
    ModelScene scene(makeThree(), {});
    scene.pose(none, 0.0);
    scene.instance().setBlending(0, true);
    SceneContent const blended = contentOf(scene.root());
    ASSERT_EQ(blended.surfaceNames(), "prop last first");
    EXPECT_TRUE(blended.surfaces[2].node->blending);
    scene.instance().setBlending(0, false);
    EXPECT_EQ(contentOf(scene.root()).surfaceNames(), "first prop last");
    EXPECT_FALSE(contentOf(scene.root()).surfaces[0].node->blending);
}

TEST(ModelPart, StaysInItsPlaceWhenItIsBlendedInTheFileAndOpaqueLater)
{
    Model model = makeLimb();
    model.materials[1].blending = true;
    model.nodes[0].translation = Vector3(0, 7, 0);
    ModelScene scene(std::move(model), {});
    scene.instance().setBlending(1, false);
    EXPECT_EQ(translationOf(contentOf(scene.root()).surfaces[1].map), Vector3(5, 7, 0));
}

TEST(ModelPart, StaysInItsPlaceAndHiddenWhenBlendingChanges)
{
    ModelScene scene(makeLimb(), {});
    scene.instance().setBlending(1, true);
    EXPECT_EQ(translationOf(contentOf(scene.root()).surfaces[1].map), Vector3(5, 0, 0));
    scene.instance().setShown(1, false);
    scene.instance().setBlending(1, false);
    EXPECT_FALSE(scene.instance().isShown(1));
    scene.instance().setShown(1, true);
    EXPECT_EQ(translationOf(contentOf(scene.root()).surfaces[1].map), Vector3(5, 0, 0));
}

} // namespace
} // namespace sgview
