#include "Viewer/Scene/ModelScene.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Viewer/Import/Importer.h"
#include "Viewer/Scene/Animation.h"
#include "Viewer/Scene/DemoScene.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>

using namespace sgview;

namespace {

/// Every drawn node with the product of the transforms above it.
class Drawn : public SGNodeVisitor {
public:
    struct Surface {
        SGSurfaceGeometryReferenceNode* node;
        Matrix map;
    };
    std::vector<Surface> surfaces;
    std::vector<SGCurveGeometryReferenceNode*> curves;

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGTransformNode* node) override
    {
        maps_.push_back(maps_.back() * node->transform.getMatrix());
    }
    void leave(SGTransformNode*) override { maps_.pop_back(); }
    void enter(SGSurfaceGeometryReferenceNode* node) override { surfaces.push_back({node, maps_.back()}); }
    void enter(SGCurveGeometryReferenceNode* node) override { curves.push_back(node); }

private:
    std::vector<Matrix> maps_{Matrix()};
};

smart_ptr<Drawn> drawnIn(ModelScene const& scene)
{
    auto drawn = make_smart<Drawn>();
    SGTraverser traverser(drawn);
    scene.root()->acceptEnter(&traverser);
    scene.root()->acceptLeave(&traverser);
    return drawn;
}

/// One triangle of one material under a chain of nodes; the caller shapes the nodes.
Model triangleModel(std::size_t nodes)
{
    Model model;
    model.materials.emplace_back();
    ModelSurface surface;
    surface.name = "triangle";
    surface.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0.5}};
    surface.normals = {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}};
    surface.facets = {0, 1, 2};
    model.surfaces.push_back(surface);
    for (std::size_t i = 0; i < nodes; ++i) {
        model.nodes.emplace_back();
        model.nodes.back().parent = static_cast<Index>(i) - 1;
    }
    model.nodes.back().surfaces = {0};
    return model;
}

void expectDrawnWhereTheFileSays(Model const& model, Index animation, double seconds)
{
    ModelScene scene(model, {});
    scene.pose(animation, seconds);
    Matrix const expected = poseNodes(model, animation, seconds).back();
    auto const drawn = drawnIn(scene);
    ASSERT_EQ(drawn->surfaces.size(), 1U);
    std::vector<Vector3> const& vertices = drawn->surfaces[0].node->getGeometry()->get()->vertices;
    for (std::size_t i = 0; i < vertices.size(); ++i)
        EXPECT_NEAR(length(transformPoint(drawn->surfaces[0].map, vertices[i]) -
                           transformPoint(expected, model.surfaces[0].positions[i])),
                    0.0, 1e-12);
}

TEST(ModelScene, DrawsStretchedThingsWhereTheFileSays)
{
    Model model = triangleModel(3);
    model.nodes[0].scale = Vector3(1, 3, 0.5);
    model.nodes[1].rotation = Quaternion{0.1825741858, 0.3651483717, 0.5477225575, 0.7302967433};
    model.nodes[2].translation = Vector3(1, 2, 3);
    model.nodes[2].scale = Vector3(2, 1, 1);
    expectDrawnWhereTheFileSays(model, none, 0.0);
}

TEST(ModelScene, DrawsTurningThingsUnderAStretchWhereTheFileSays)
{
    Model model = triangleModel(2);
    model.nodes[0].scale = Vector3(1, 3, 0.5);
    ModelAnimation clip;
    clip.length = 1.0;
    clip.channels.push_back({1, {}, {Interpolation::linear, {0.0, 1.0}, {{0, 0, 0, 1}, {0, 0, 1, 0}}}, {}});
    model.animations.push_back(clip);
    for (double const seconds : {0.0, 0.3, 0.8})
        expectDrawnWhereTheFileSays(model, 0, seconds);
}

TEST(ModelScene, TurnsNormalsOfStretchedThingsAsTheirTangentsTurn)
{
    Model model = triangleModel(1);
    model.surfaces[0].positions = {{0, 0, 0}, {1, 0, 1}, {0, 1, 0}}; // in the plane x = z
    model.surfaces[0].normals = {{-1, 0, 1}, {-1, 0, 1}, {-1, 0, 1}};
    model.nodes[0].scale = Vector3(4, 1, 1); // now in the plane x = 4 z
    ModelScene const scene(model, {});
    auto const drawn = drawnIn(scene);
    Vector3 const normal =
        drawn->surfaces[0].map == Matrix()
            ? Vector3()
            : Matrix3(drawn->surfaces[0].map) * drawn->surfaces[0].node->getNormals()->get()->normals[0];
    Vector3 const expected = UVector3(-1, 0, 4);
    EXPECT_NEAR(length(UVector3(normal) - expected), 0.0, 1e-12);
}

TEST(ModelScene, SharesRestGeometryWhereNothingIsStretched)
{
    Model model = triangleModel(2);
    model.nodes[0].surfaces = {0};
    model.nodes[1].translation = Vector3(5, 0, 0);
    model.nodes[1].scale = Vector3(-2, -2, -2);
    ModelScene const scene(model, {});
    auto const drawn = drawnIn(scene);
    ASSERT_EQ(drawn->surfaces.size(), 2U);
    EXPECT_EQ(drawn->surfaces[0].node->getGeometry(), drawn->surfaces[1].node->getGeometry());
}

TEST(ModelScene, AMirroringNodeReachesTheRendererAsANegativeScale)
{
    Model model = triangleModel(1);
    model.nodes[0].scale = Vector3(-1, 1, 1);
    ModelScene const scene(model, {});
    SGNode const* node = drawnIn(scene)->surfaces.at(0).node->getParent()->getParent();
    auto const* transform = dynamic_cast<SGTransformNode const*>(node);
    ASSERT_NE(transform, nullptr);
    EXPECT_LT(transform->transform.getScale(), 0.0);
}

TEST(ModelScene, BoundsFollowPoseAndMirror)
{
    Model model = triangleModel(1);
    model.nodes[0].translation = Vector3(10, 0, 0);
    SceneOptions options;
    Bounds const plain = ModelScene(model, options).bounds();
    EXPECT_EQ(plain.low, Vector3(10, 0, 0));
    EXPECT_EQ(plain.high, Vector3(11, 1, 0.5));
    options.mirror = true;
    Bounds const mirrored = ModelScene(model, options).bounds();
    EXPECT_EQ(mirrored.low, Vector3(-11, -1, -0.5));
    EXPECT_EQ(mirrored.high, Vector3(-10, 0, 0));
}

TEST(ModelScene, DrawsBlendedSurfacesLastFromFarToNear)
{
    Model model = triangleModel(3);
    model.materials.emplace_back();
    model.materials[1].blending = true;
    ModelSurface glass = model.surfaces[0];
    glass.material = 1;
    model.surfaces.push_back(glass);
    model.nodes[0].surfaces = {1};
    model.nodes[1].surfaces = {1};
    model.nodes[1].translation = Vector3(0, 0, -5);
    ModelScene scene(model, {});
    scene.setView({0.0, 0.0, 1.0}, 100, 100);
    auto const drawn = drawnIn(scene);
    ASSERT_EQ(drawn->surfaces.size(), 3U);
    EXPECT_FALSE(drawn->surfaces[0].node->blending);
    EXPECT_EQ(translationOf(drawn->surfaces[1].map), Vector3(0, 0, -5));
    EXPECT_EQ(translationOf(drawn->surfaces[2].map), Vector3(0, 0, 0));
    scene.setView({180.0, 0.0, 1.0}, 100, 100);
    EXPECT_EQ(translationOf(drawnIn(scene)->surfaces[1].map), Vector3(0, 0, 0));
}

TEST(ModelScene, PartsOfABlendedSurfaceKeepTheirOrder)
{
    // Two parts, one near and one far, of a surface that is behind another as a whole.
    Model model = triangleModel(1);
    model.materials[0].blending = true;
    model.surfaces.resize(3, model.surfaces[0]);
    model.nodes[0].surfaces = {0, 1, 2};
    std::array<double, 3> const depths{-1.0, -9.0, -3.0};
    for (std::size_t i = 0; i < 3; ++i) {
        model.surfaces[i].name = std::to_string(i);
        for (Vector3& position : model.surfaces[i].positions)
            position.z += depths[i];
    }
    model.splits.push_back({"whole", 0, 2});
    auto const orderFrom = [&model](double azimuth) {
        ModelScene scene(model, {});
        scene.setView({azimuth, 0.0, 1.0}, 100, 100);
        auto const drawn = drawnIn(scene);
        std::string order;
        for (Drawn::Surface const& surface : drawn->surfaces)
            order += surface.node->getSurfaceData()->name;
        return order;
    };
    EXPECT_EQ(orderFrom(0.0), "012");
    EXPECT_EQ(orderFrom(180.0), "201");
    model.splits.clear();
    EXPECT_EQ(orderFrom(0.0), "120");
}

TEST(ModelScene, UnlitSurfacesShowTheirDiffuseColour)
{
    Model model = triangleModel(1);
    model.materials[0].diffuse = {1.0F, 0.5F, 0.25F, 1.0F};
    SceneOptions options;
    options.unlit = true;
    ModelScene const scene(model, options);
    auto const* const node = drawnIn(scene)->surfaces.at(0).node;
    EXPECT_TRUE(node->unlit);
    EXPECT_EQ(node->material.ambient, (Color{1.0F, 0.5F, 0.25F, 1.0F}));
}

TEST(ModelScene, ADeepHierarchyIsBuiltPosedAndReleased)
{
    Model model = triangleModel(200000);
    ModelScene scene(std::move(model), {});
    scene.pose(none, 0.0);
    EXPECT_EQ(scene.bounds().high, Vector3(1, 1, 0.5));
}

/// Counts skinned surfaces, with and without a lights node above them.
class LightsAbove : public SGNodeVisitor {
public:
    int lit = 0;
    int unlit = 0;

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGLightsNode*) override { ++depth_; }
    void leave(SGLightsNode*) override { --depth_; }
    void enter(SGSurfaceGeometryReferenceNode* node) override
    {
        if (node->getBoneWeights())
            ++(depth_ > 0 ? lit : unlit);
    }

private:
    int depth_ = 0;
};

TEST(ModelScene, EverySkinnedSurfaceIsBelowALightsNode)
{
    // Skinning on the card takes its directions of light from there.
    std::filesystem::path const creature = std::filesystem::path(TEST_MODELS) / "../../Assets/creature.glb";
    SceneOptions unlit;
    unlit.unlit = true;
    ModelScene const scene(importModel(creature, {}), unlit);
    DemoScene const demo(importModel(creature, {}));
    for (smart_ptr<SGRootNode> const& root : {scene.root(), demo.root()}) {
        auto counter = make_smart<LightsAbove>();
        SGTraverser traverser(counter);
        root->acceptEnter(&traverser);
        root->acceptLeave(&traverser);
        EXPECT_GE(counter->lit, 1);
        EXPECT_EQ(counter->unlit, 0);
    }
}

TEST(ModelScene, LinesOfAFileBecomeCurves)
{
    ModelScene const scene(importModel(std::filesystem::path(TEST_MODELS) / "lines.gltf", {}), {});
    auto const drawn = drawnIn(scene);
    EXPECT_GE(drawn->curves.size(), 3U);
    std::size_t closed = 0;
    for (SGCurveGeometryReferenceNode const* curve : drawn->curves)
        closed += curve->getGeometry()->get()->closed ? 1 : 0;
    EXPECT_GE(closed, 1U);
}

} // namespace
