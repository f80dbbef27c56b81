#include "Tests/Frame/FrameRenderer.h"
#include "Tests/Frame/Limb.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/SceneParts.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr int rings = 24;
constexpr double bend = 70.0 * std::numbers::pi / 180.0;

/// How strongly the upper bone holds a point: it takes over smoothly about the middle.
double upperWeight(Vector3 const& point)
{
    return std::clamp((point.y + 0.3) / 0.6, 0.0, 1.0);
}

/// The upper bone bends towards +x about the origin.
Vector3 turned(Vector3 const& v)
{
    double const c = std::cos(-bend);
    double const s = std::sin(-bend);
    return {c * v.x - s * v.y, s * v.x + c * v.y, v.z};
}

Vector3 mixed(Vector3 const& v, double weight)
{
    return v * (1.0 - weight) + turned(v) * weight;
}

/// The tube as two bones bend it, worked out without them: points are mixed by weight, normals are
/// perpendicular to two mixed tangents.
smart_ptr<SurfaceGeometryData const> bentTube()
{
    auto data = make_smart<SurfaceGeometryData>(*tubeGeometry(rings));
    for (std::size_t i = 0; i < data->vertices.size(); ++i) {
        double const weight = upperWeight(data->vertices[i]);
        Vector3 const up(0.0, 1.0, 0.0);
        Vector3 const sideways = cross(up, data->normals[i]);
        data->normals[i] = UVector3(cross(mixed(sideways, weight), mixed(up, weight)));
        data->vertices[i] = mixed(data->vertices[i], weight);
    }
    return data;
}

void addSkin(SGSurfaceGeometryReferenceNode& node, SurfaceGeometryData const& geometry)
{
    auto weights = make_smart<BoneWeightsData>();
    for (Vector3 const& point : geometry.vertices) {
        double const upper = upperWeight(point);
        weights->addVertex(std::array{BoneInfluence{0, 1.0 - upper}, BoneInfluence{1, upper}});
    }
    node.setBoneWeights(make_smart<SharedBoneWeights>(weights));
    BoneTransform upperBone;
    upperBone.rotation = Matrix3::rotationMatrix(Vector3(0.0, 0.0, 1.0), -bend);
    node.setBoneTransforms(
        make_smart<SharedBoneTransforms>(BoneTransformVector({BoneTransform(), upperBone})));
}

Material shiny()
{
    Material material = matt({0.9F, 0.5F, 0.3F, 1.0F});
    material.specular = Color{0.6F, 0.6F, 0.6F, 1.0F};
    material.shininess = 25.0F;
    return material;
}

TEST(SkinFrame, TwoBonesBendAsPlainCodeDoes)
{
    Stage bent;
    bent.lit->lights[0].direction = Vector3(0.4, 0.5, 1.0);
    addSurface(bent.lit, bentTube(), shiny());
    sgview::Picture const expected = FrameRenderer::draw(bent.root);

    Stage skinned;
    skinned.lit->lights[0].direction = Vector3(0.4, 0.5, 1.0);
    auto const geometry = tubeGeometry(rings);
    auto const node = addSurface(skinned.lit, geometry, shiny());
    sgview::Picture const atRest = FrameRenderer::draw(skinned.root);
    addSkin(*node, *geometry);
    sgview::Picture const picture = FrameRenderer::draw(skinned.root);

    EXPECT_GT(countMismatches(picture, atRest), 2000U) << "nothing has bent";
    EXPECT_TRUE(looksLike(picture, expected, "bentTube-skinned"));
    EXPECT_LE(largestSquaredDistance(picture, expected), 3) << "more than one step in each component";
    EXPECT_TRUE(looksLikeReference(picture, "bentTube"));
}

TEST(SkinFrame, EachFrameShowsThePoseOfItsMoment)
{
    Stage stage;
    auto const geometry = tubeGeometry(rings);
    auto const node = addSurface(stage.lit, geometry, shiny());
    sgview::Picture const atRest = FrameRenderer::draw(stage.root);
    addSkin(*node, *geometry);
    sgview::Picture const bent = FrameRenderer::draw(stage.root);
    node->getBoneTransforms()->edit().transforms.assign(2, BoneTransform());
    EXPECT_EQ(countMismatches(FrameRenderer::draw(stage.root), atRest), 0U);
    EXPECT_GT(countMismatches(bent, atRest), 2000U);
}

} // namespace
