#include "Tests/Frame/Limb.h"

#include "Tests/Frame/SceneParts.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr int around = 24;
constexpr double low = -0.8;
constexpr double height = 1.6;
constexpr double radius = 0.18;

/// Weights of four neighbours at equal distances: a uniform cubic B-spline's.
std::array<double, 4> splineWeights(double t)
{
    return {(1.0 - t) * (1.0 - t) * (1.0 - t) / 6.0, (3.0 * t * t * t - 6.0 * t * t + 4.0) / 6.0,
            (-3.0 * t * t * t + 3.0 * t * t + 3.0 * t + 1.0) / 6.0, t * t * t / 6.0};
}

std::array<BoneInfluence, 4> influencesAt(double along, int bones)
{
    double const place = along * bones - 0.5;
    double const below = std::floor(place);
    std::array<double, 4> const spline = splineWeights(place - below);
    std::array<BoneInfluence, 4> influences;
    for (int i = 0; i < 4; ++i)
        influences[static_cast<std::size_t>(i)] = {std::clamp(static_cast<int>(below) - 1 + i, 0, bones - 1),
                                                   spline[static_cast<std::size_t>(i)]};
    return influences;
}

smart_ptr<BoneWeightsData const> weightsFor(SurfaceGeometryData const& tube, int bones, double size)
{
    auto weights = make_smart<BoneWeightsData>();
    for (Vector3 const& vertex : tube.vertices)
        weights->addVertex(influencesAt((vertex.y / size - low) / height, bones));
    return weights;
}

/// What a bone does where its lower joint turns it and the bone below moves the joint.
BoneTransform turnedAt(Vector3 const& joint, Matrix3 const& turn, BoneTransform const& below)
{
    BoneTransform result;
    result.rotation = below.rotation * turn;
    result.translation = below.transform(joint - turn * joint);
    return result;
}

BoneTransformVector chain(int bones, double degrees, double size)
{
    constexpr double turnOfAxis = 0.9; // radians a joint
    std::vector<BoneTransform> pose(1);
    for (int i = 1; i < bones; ++i) {
        Vector3 const axis(std::sin(turnOfAxis * i), 0.0, std::cos(turnOfAxis * i));
        double const angle = (i % 2 == 0 ? degrees : -degrees) * std::numbers::pi / 180.0;
        Vector3 const joint(0.0, size * (low + height * i / bones), 0.0);
        pose.push_back(turnedAt(joint, Matrix3::rotationMatrix(axis, angle), pose.back()));
    }
    return BoneTransformVector(pose);
}

} // namespace

int ringsOfLimb(int bones)
{
    return std::max(24, 4 * bones);
}

smart_ptr<SurfaceGeometryData const> tubeGeometry(int rings, double size)
{
    auto data = make_smart<SurfaceGeometryData>();
    for (int i = 0; i <= rings; ++i)
        for (int j = 0; j <= around; ++j) {
            double const angle = 2.0 * std::numbers::pi * j / around;
            UVector3 const normal(std::sin(angle), 0.0, std::cos(angle));
            data->normals.push_back(normal);
            data->vertices.push_back((normal * radius + Vector3(0.0, low + height * i / rings, 0.0)) * size);
        }
    for (int i = 0; i < rings; ++i)
        for (int j = 0; j < around; ++j) {
            int const corner = i * (around + 1) + j;
            int const above = corner + around + 1;
            data->facets.insert(data->facets.end(),
                                {corner, corner + 1, above + 1, corner, above + 1, above});
        }
    return data;
}

smart_ptr<SharedTextureCoords> tubeCoordinates(int rings, double repeats)
{
    std::vector<Vector3> coordinates;
    for (int i = 0; i <= rings; ++i)
        for (int j = 0; j <= around; ++j)
            coordinates.emplace_back(repeats * j / around, repeats * i / rings, 0.0);
    return textureCoordinates(coordinates);
}

Limb::Limb(int bones, double degrees, double size)
    : geometry(tubeGeometry(ringsOfLimb(bones), size)),
      weights(weightsFor(*geometry, bones, size)),
      pose(chain(bones, degrees, size))
{
}

void Limb::moveBy(SGSurfaceGeometryReferenceNode& surface) const
{
    surface.setBoneWeights(make_smart<SharedBoneWeights>(weights));
    surface.setBoneTransforms(make_smart<SharedBoneTransforms>(pose));
}
