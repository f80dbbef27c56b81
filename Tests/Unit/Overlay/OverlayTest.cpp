#include "Tests/Unit/Overlay/LimbModel.h"
#include "Tests/Unit/Overlay/SceneWalk.h"
#include "Viewer/Overlay/AxesOverlay.h"
#include "Viewer/Overlay/GridOverlay.h"
#include "Viewer/Overlay/NormalOverlay.h"
#include "Viewer/Overlay/SkeletonOverlay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

namespace sgview {
namespace {

constexpr double exact = 1e-12;

void expectNear(Vector3 const& a, Vector3 const& b)
{
    EXPECT_NEAR(length(a - b), 0.0, exact) << a.x << ' ' << a.y << ' ' << a.z;
}

OverlayStyle styleOf(ModelScene const& scene)
{
    OverlayStyle style;
    style.model = scene.bounds();
    return style;
}

TEST(NormalOverlay, DrawsALineAVertexAlongItsNormal)
{
    ModelScene scene(makeLimb(), {});
    OverlayStyle const style = styleOf(scene);
    NormalOverlay const overlay(scene, style);
    SceneContent const content = contentOf(scene.root());
    ASSERT_EQ(content.curves.size(), 6U);
    double const length = style.size() * NormalOverlay::relativeLength;
    std::array<std::pair<Vector3, Vector3>, 6> const expected{{
        {{0, 0, 0}, {1, 0, 0}},
        {{0, 1, 0}, {1, 0, 0}},
        {{0, 2, 0}, {1, 0, 0}},
        {{5, 0, 0}, {0, 0, 1}},
        {{6, 0, 0}, {0, 0, 1}},
        {{5, 1, 0}, {0, 0, 1}},
    }};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        std::vector<Vector3> const line = content.pointsOf(i);
        ASSERT_EQ(line.size(), 2U);
        expectNear(line[0], expected[i].first);
        expectNear(line[1], expected[i].first + expected[i].second * length);
    }
}

TEST(NormalOverlay, FollowsThePose)
{
    ModelScene scene(makeLimb(), {});
    NormalOverlay overlay(scene, styleOf(scene));
    scene.pose(0, 1.0);
    overlay.update();
    std::vector<Vector3> const line = contentOf(scene.root()).pointsOf(2);
    expectNear(line[0], {-1, 1, 0}); // (0, 2, 0), a quarter about z through (0, 1, 0)
    Vector3 const way = line[1] - line[0];
    expectNear(way * (1.0 / length(way)), {0, 1, 0});
}

TEST(NormalOverlay, PointsOutwardsFromAMirroredModel)
{
    SceneOptions mirror;
    mirror.mirror = true;
    ModelScene scene(makeLimb(), mirror);
    NormalOverlay const overlay(scene, styleOf(scene));
    std::vector<Vector3> const line = contentOf(scene.root()).pointsOf(4);
    expectNear(line[0], {-6, 0, 0});
    EXPECT_LT(line[1].z, 0.0); // the mirror image of +z
}

TEST(NormalOverlay, PointsOutwardsFromAPartThatANodeMirrors)
{
    Model model = makeLimb();
    model.nodes[3].scale = Vector3(1, 1, -1);
    model.surfaces[1].normals.assign(3, Vector3(0, 0, 1));
    ModelScene scene(std::move(model), {});
    NormalOverlay const overlay(scene, styleOf(scene));
    std::vector<Vector3> const line = contentOf(scene.root()).pointsOf(3);
    EXPECT_LT(line[1].z, line[0].z); // the mirror image of +z
}

TEST(NormalOverlay, LeavesOutVerticesOfLargeModels)
{
    Model model = makeLimb();
    ModelSurface& prop = model.surfaces[1];
    constexpr std::size_t vertices = NormalOverlay::mostLines * 5;
    prop.positions.resize(vertices);
    prop.normals.resize(vertices, Vector3(0, 0, 1));
    ModelScene scene(std::move(model), {});
    NormalOverlay const overlay(scene, styleOf(scene));
    EXPECT_EQ(overlay.step(), 6U);
    std::size_t const lines = contentOf(scene.root()).curves.size();
    EXPECT_GT(lines, NormalOverlay::mostLines / 2);
    EXPECT_LE(lines, NormalOverlay::mostLines + 2); // every surface shows at least one
}

TEST(NormalOverlay, SharesOneGeometry)
{
    ModelScene scene(makeLimb(), {});
    NormalOverlay overlay(scene, styleOf(scene));
    SceneContent const content = contentOf(scene.root());
    smart_ptr<SharedGeometry> const geometry = content.curves[0].node->getGeometry();
    for (auto const& curve : content.curves)
        EXPECT_EQ(curve.node->getGeometry(), geometry);
    scene.pose(0, 0.5);
    overlay.update();
    EXPECT_EQ(contentOf(scene.root()).curves[0].node->getGeometry(), geometry);
}

TEST(SkeletonOverlay, LeadsFromJointToJointAndFollowsThePose)
{
    Model model = makeLimb();
    model.nodes.push_back({});
    model.nodes[4].parent = 2;
    model.nodes[4].translation = Vector3(0, 3, 0);
    model.skins[0].bones.push_back({4, Matrix::translationMatrix(Vector3(0, -4, 0))});
    ModelScene scene(std::move(model), {});
    SkeletonOverlay overlay(scene, styleOf(scene));
    auto const isAt = [&scene](std::size_t bone, Vector3 const& from, Vector3 const& to) {
        Matrix const map = contentOf(scene.root()).curves[bone].map;
        expectNear(transformPoint(map, {0, 0, 0}), from);
        expectNear(transformPoint(map, {0, 0, 1}), to);
    };
    ASSERT_EQ(contentOf(scene.root()).curves.size(), 3U); // two bones and the last joint
    isAt(0, {0, 0, 0}, {0, 1, 0});
    isAt(1, {0, 1, 0}, {0, 4, 0});
    scene.pose(0, 1.0);
    overlay.update();
    isAt(0, {0, 0, 0}, {0, 1, 0});
    isAt(1, {0, 1, 0}, {-3, 1, 0});
    expectNear(translationOf(contentOf(scene.root()).curves[2].map), {-3, 1, 0});
}

TEST(SkeletonOverlay, PassesOverNodesThatAreNoBones)
{
    Model model = makeLimb();
    model.skins[0].bones = {{0, Matrix()}, {2, Matrix::translationMatrix(Vector3(0, -1, 0))}};
    EXPECT_THAT(jointsOf(model), testing::ElementsAre(0, 2));
    ModelScene scene(std::move(model), {});
    SkeletonOverlay const overlay(scene, styleOf(scene));
    SceneContent const content = contentOf(scene.root());
    ASSERT_EQ(content.curves.size(), 2U);
    expectNear(transformPoint(content.curves[0].map, {0, 0, 1}), {0, 1, 0});
}

TEST(SkeletonOverlay, ShowsTheNodesOfAModelWithoutSkins)
{
    Model model = makeLimb();
    model.nodes[0].surfaces.clear();
    model.surfaces[0] = model.surfaces[1];
    model.skins.clear();
    EXPECT_THAT(jointsOf(model), testing::ElementsAre(0, 1, 2, 3));
}

TEST(SkeletonOverlay, DrawsEachEdgeOfABoneOnce)
{
    ModelScene scene(makeLimb(), {});
    SkeletonOverlay const overlay(scene, styleOf(scene));
    GeometryData const& bone = *contentOf(scene.root()).curves[0].node->getGeometry()->get();
    ASSERT_TRUE(bone.closed);
    std::set<std::pair<std::size_t, std::size_t>> edges;
    std::vector<Vector3> corners;
    auto const numberOf = [&corners](Vector3 const& point) {
        auto found = std::find(corners.begin(), corners.end(), point);
        if (found == corners.end())
            found = corners.insert(corners.end(), point);
        return static_cast<std::size_t>(found - corners.begin());
    };
    for (std::size_t i = 0; i < bone.vertices.size(); ++i) {
        std::size_t const a = numberOf(bone.vertices[i]);
        std::size_t const b = numberOf(bone.vertices[(i + 1) % bone.vertices.size()]);
        EXPECT_TRUE(edges.emplace(std::min(a, b), std::max(a, b)).second);
    }
    EXPECT_EQ(corners.size(), 6U);
    EXPECT_EQ(edges.size(), 12U);
}

TEST(AxesOverlay, StandsInTheOriginWithALabelAtEachTip)
{
    ModelScene scene(makeLimb(), {});
    OverlayStyle const style = styleOf(scene);
    AxesOverlay const overlay(scene, style);
    SceneContent const content = contentOf(scene.root());
    ASSERT_EQ(content.curves.size(), 3U);
    std::set<std::uint16_t> stipples;
    for (std::size_t i = 0; i < 3; ++i) {
        std::vector<Vector3> const line = content.pointsOf(i);
        EXPECT_EQ(line[0], Vector3());
        EXPECT_GT(line[1][static_cast<int>(i)], 0.1 * style.size());
        EXPECT_DOUBLE_EQ(length(line[1]), line[1][static_cast<int>(i)]);
        EXPECT_EQ(overlay.labels()[i].place, line[1]);
        EXPECT_EQ(overlay.labels()[i].text, std::string(1, static_cast<char>('x' + i)));
        stipples.insert(content.curves[i].node->lineStipple);
    }
    EXPECT_EQ(stipples.size(), 3U) << "axes must differ by more than their colours";
}

TEST(AxesOverlay, StandsAtAModelThatIsFarFromTheOrigin)
{
    Model model = makeLimb();
    model.nodes[0].translation = Vector3(1000, 0, 0);
    model.nodes[0].surfaces.clear();
    ModelScene scene(std::move(model), {});
    AxesOverlay const overlay(scene, styleOf(scene));
    expectNear(overlay.labels()[0].start, {1005, 0, 0});
}

TEST(GridOverlay, LiesAtTheModelsLowestPointAlongTheAxisThatPointsUp)
{
    ModelScene scene(makeLimb(), {});
    for (int axis = 0; axis < 3; ++axis) {
        OverlayStyle style = styleOf(scene);
        style.model.low = Vector3(-3, -4, -5);
        style.up = Vector3(axis == 0 ? 1 : 0, axis == 1 ? 1 : 0, axis == 2 ? 1 : 0);
        GridOverlay const grid(scene, style);
        EXPECT_EQ(grid.height(), -3.0 - axis);
        SceneContent const content = contentOf(scene.root());
        for (std::size_t i = 0; i < content.curves.size(); ++i)
            for (Vector3 const& point : content.pointsOf(i))
                EXPECT_EQ(point[axis], grid.height());
    }
}

TEST(GridOverlay, CoversTheModelWithLinesAtMultiplesOfItsSide)
{
    ModelScene scene(makeLimb(), {});
    OverlayStyle const style = styleOf(scene);
    GridOverlay const grid(scene, style);
    EXPECT_LE(grid.bounds().low.x, style.model.low.x);
    EXPECT_GE(grid.bounds().high.x, style.model.high.x);
    SceneContent const content = contentOf(scene.root());
    ASSERT_EQ(content.curves.size(), 4U);
    for (std::size_t i = 0; i < content.curves.size(); ++i) {
        std::vector<Vector3> const points = content.pointsOf(i);
        for (std::size_t k = 0; k < points.size(); ++k) {
            double const x = points[k].x / grid.side();
            double const z = points[k].z / grid.side();
            EXPECT_NEAR(x, std::round(x), 1e-9);
            EXPECT_NEAR(z, std::round(z), 1e-9);
            if (k == 0)
                continue;
            bool const alongX = points[k].z == points[k - 1].z;
            bool const alongZ = points[k].x == points[k - 1].x;
            EXPECT_TRUE(alongX || alongZ) << "no line goes across squares";
            // What joins two lines lies on the grid's border.
            if (k % 2 == 0) {
                double const at = i % 2 == 0 ? points[k].z : points[k].x;
                double const low = i % 2 == 0 ? grid.bounds().low.z : grid.bounds().low.x;
                double const high = i % 2 == 0 ? grid.bounds().high.z : grid.bounds().high.x;
                EXPECT_TRUE(std::abs(at - low) < 1e-9 || std::abs(at - high) < 1e-9);
            }
        }
    }
}

TEST(GridOverlay, RoundsLengthsUp)
{
    EXPECT_DOUBLE_EQ(roundLength(0.9), 1.0);
    EXPECT_DOUBLE_EQ(roundLength(1.0), 1.0);
    EXPECT_DOUBLE_EQ(roundLength(1.1), 2.0);
    EXPECT_DOUBLE_EQ(roundLength(0.021), 0.05);
    EXPECT_DOUBLE_EQ(roundLength(600.0), 1000.0);
}

TEST(OverlayStyle, InkStandsOutFromTheBackground)
{
    OverlayStyle style;
    style.background = {1.0F, 1.0F, 1.0F, 1.0F};
    EXPECT_LT(style.ink().g, 0.2F);
    EXPECT_EQ(style.shade(0.0), style.background);
    style.background = {0.0F, 0.0F, 0.0F, 1.0F};
    EXPECT_GT(style.ink().g, 0.8F);
    EXPECT_EQ(style.shade(1.0), style.ink());
}

} // namespace
} // namespace sgview
