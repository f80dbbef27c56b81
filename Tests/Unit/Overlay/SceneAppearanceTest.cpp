#include "Viewer/Overlay/SceneAppearance.h"
#include "Tests/Unit/Overlay/LimbModel.h"
#include "Tests/Unit/Overlay/SceneWalk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sgview {
namespace {

using testing::HasSubstr;

Vector3 const up(0.0, 1.0, 0.0);

/// A limb with a picture on its plain part.
Model makePainted()
{
    Model model = makeLimb();
    ModelImage image;
    image.width = image.height = 1;
    image.rows = {1, 2, 3, 0};
    model.images.push_back(image);
    model.materials[1].textures.push_back({0, 0, false});
    model.surfaces[1].coordinates = {{{0, 0}, {1, 0}, {0, 1}}};
    return model;
}

struct SceneAppearanceTest : testing::Test {
    ModelScene scene{makePainted(), {}};
    SceneAppearance appearance{scene};
    DisplayOptions options;

    SceneContent update()
    {
        appearance.update(options, up, 1.0);
        return contentOf(scene.root());
    }
};

/// What can be seen of a surface.
struct Look {
    explicit Look(SGSurfaceGeometryReferenceNode const& node)
        : material(node.material),
          blending(node.blending),
          unlit(node.unlit),
          wireframe(node.wireframe),
          layers(node.textureLayers.size()),
          texture(layers > 0 ? node.textureLayers[0].texture.get() : nullptr)
    {
    }
    bool operator==(Look const&) const = default;

    Material material;
    bool blending;
    bool unlit;
    bool wireframe;
    std::size_t layers;
    SharedImage const* texture;
};

std::vector<Look> looksIn(SceneContent const& content)
{
    std::vector<Look> looks;
    for (auto const& surface : content.surfaces)
        looks.emplace_back(*surface.node);
    return looks;
}

TEST_F(SceneAppearanceTest, ChangesNothingWhereNothingIsSwitchedOn)
{
    SceneContent const before = contentOf(scene.root());
    std::vector<Look> const looks = looksIn(before);
    SceneContent const after = update();
    EXPECT_EQ(after.nodes, before.nodes);
    EXPECT_EQ(looksIn(after), looks);
}

TEST_F(SceneAppearanceTest, LeavesNothingBehindOfWhatIsSwitchedOff)
{
    SceneContent const before = contentOf(scene.root());
    std::vector<Look> const looks = looksIn(before);
    for (bool DisplayOptions::*const option :
         {&DisplayOptions::wireframe, &DisplayOptions::unlit, &DisplayOptions::normals,
          &DisplayOptions::skeleton, &DisplayOptions::axes, &DisplayOptions::influences,
          &DisplayOptions::grid}) {
        options.*option = true;
        SceneContent const on = update();
        EXPECT_TRUE(on.nodes != before.nodes || looksIn(on) != looks) << "it does something";
        options.*option = false;
        SceneContent const off = update();
        EXPECT_EQ(off.nodes, before.nodes);
        EXPECT_EQ(looksIn(off), looks);
        EXPECT_TRUE(appearance.legend().empty());
        EXPECT_TRUE(appearance.labels().empty());
        EXPECT_TRUE(appearance.overlayBounds().empty());
    }
}

TEST_F(SceneAppearanceTest, LeavesNothingBehindWhenItGoes)
{
    ModelScene other(makeLimb(), {});
    std::vector<SGNode const*> const before = contentOf(other.root()).nodes;
    options.normals = options.skeleton = options.axes = options.grid = true;
    {
        SceneAppearance passing(other);
        passing.update(options, up, 1.0);
        EXPECT_GT(contentOf(other.root()).nodes.size(), before.size());
    }
    EXPECT_EQ(contentOf(other.root()).nodes, before);
}

TEST_F(SceneAppearanceTest, DrawsEdgesOrWithoutLights)
{
    options.wireframe = true;
    for (Look const& look : looksIn(update()))
        EXPECT_TRUE(look.wireframe && !look.unlit);
    options.wireframe = false;
    options.unlit = true;
    SceneContent const content = update();
    for (Look const& look : looksIn(content)) {
        EXPECT_TRUE(look.unlit && !look.wireframe);
        EXPECT_EQ(look.material.ambient, look.material.diffuse)
            << "an unlit surface shows its ambient colour";
    }
    EXPECT_EQ(content.surfaces[0].node->material.ambient, (Color{0.2F, 0.4F, 0.6F, 1.0F}));
}

TEST_F(SceneAppearanceTest, LinesOfTheModelAreAsWideOnDenseScreens)
{
    for (double const ratio : {1.0, 2.0, 1.5}) {
        appearance.update(options, up, ratio);
        for (auto const& surface : contentOf(scene.root()).surfaces)
            EXPECT_EQ(surface.node->lineWidth, ratio);
    }
}

TEST_F(SceneAppearanceTest, TheSkeletonFollowsThePose)
{
    Model model = makeLimb();
    model.animations[0].channels[0].node = 1;
    ModelScene turning(std::move(model), {});
    SceneAppearance follower(turning);
    options.skeleton = true;
    follower.update(options, up, 1.0);
    turning.pose(0, 1.0);
    follower.update(options, up, 1.0);
    Vector3 const tip = transformPoint(contentOf(turning.root()).curves[0].map, Vector3(0, 0, 1));
    EXPECT_NEAR(length(tip - Vector3(-1, 0, 0)), 0.0, 1e-12);
}

TEST_F(SceneAppearanceTest, NormalsFollowThePose)
{
    options.normals = true;
    scene.pose(none, 0.0);
    EXPECT_EQ(update().pointsOf(2)[0], Vector3(0, 2, 0));
    scene.pose(0, 1.0);
    EXPECT_NEAR(length(update().pointsOf(2)[0] - Vector3(-1, 1, 0)), 0.0, 1e-12);
}

TEST_F(SceneAppearanceTest, OverlaysSuitTheBackgroundTheRatioAndTheAxisThatPointsUp)
{
    options.grid = true;
    options.background = {1.0F, 1.0F, 1.0F, 1.0F};
    SceneContent const light = update();
    Color const onLight = light.curves[0].node->material.ambient;
    double const width = light.curves[0].node->lineWidth;
    options.background = {0.0F, 0.0F, 0.0F, 1.0F};
    appearance.update(options, Vector3(0, 0, 1), 2.0);
    SceneContent const dark = contentOf(scene.root());
    EXPECT_GT(dark.curves[0].node->material.ambient.g, 0.0F);
    EXPECT_LT(onLight.g, 1.0F);
    EXPECT_EQ(dark.curves[0].node->lineWidth, 2.0 * width);
    EXPECT_THAT(appearance.legend(), testing::ElementsAre(HasSubstr("z = 0")));
}

TEST_F(SceneAppearanceTest, ShowsTheInfluenceOfABoneAndEdgesWhereThereIsNone)
{
    options.influences = true;
    appearance.influences().choose(0);
    SceneContent const content = update();
    SGSurfaceGeometryReferenceNode const& limb = *content.surfaces[0].node;
    ASSERT_EQ(limb.textureLayers.size(), 1U);
    EXPECT_FALSE(limb.wireframe);
    smart_ptr<SharedTextureCoords> const first = limb.textureLayers[0].coordinates;
    SGSurfaceGeometryReferenceNode const& prop = *content.surfaces[1].node;
    EXPECT_TRUE(prop.textureLayers.empty());
    EXPECT_TRUE(prop.wireframe);

    appearance.influences().choose(1);
    update();
    EXPECT_NE(limb.textureLayers[0].coordinates.get(), first.get());
}

TEST_F(SceneAppearanceTest, ShowsEditedMaterialsAtOnceAndTheFilesOnesAfterAReset)
{
    std::vector<Look> const looks = looksIn(update());
    MaterialLook look = appearance.materials().look(0);
    look.material.diffuse = {1.0F, 0.0F, 0.0F, 0.5F};
    look.material.shininess = 64.0F;
    look.blending = true;
    appearance.materials().edit(0, look);
    EXPECT_TRUE(appearance.materials().isChanged(0));
    EXPECT_FALSE(appearance.materials().isChanged(1));
    SceneContent const edited = update();
    ASSERT_EQ(edited.surfaceNames(), "prop limb") << "blended surfaces come last";
    EXPECT_EQ(edited.surfaces[1].node->material, look.material);
    EXPECT_TRUE(edited.surfaces[1].node->blending);
    EXPECT_EQ(Look(*edited.surfaces[0].node), looks[1]);
    appearance.materials().reset(0);
    EXPECT_FALSE(appearance.materials().isChanged(0));
    EXPECT_EQ(looksIn(update())[0], looks[0]);
}

TEST_F(SceneAppearanceTest, EditsOutliveASwitch)
{
    MaterialLook look = appearance.materials().look(0);
    look.material.emissive = {0.5F, 0.5F, 0.5F, 1.0F};
    appearance.materials().edit(0, look);
    options.influences = true;
    update();
    options.influences = false;
    EXPECT_EQ(update().surfaces[0].node->material, look.material);
}

TEST_F(SceneAppearanceTest, TellsWhatTheCameraMustNotCutOff)
{
    options.grid = true;
    update();
    Bounds const grid = appearance.overlayBounds();
    EXPECT_LT(grid.low.x, scene.bounds().low.x);
    EXPECT_GT(grid.high.z, scene.bounds().high.z);
}

} // namespace
} // namespace sgview
