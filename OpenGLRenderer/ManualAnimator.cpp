#include "OpenGLRenderer/ManualAnimator.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "OpenGLRenderer/Skinning.h"

namespace {

void skinVertex(Vector3& position, UVector3& normal, std::span<BoneInfluence const> influences,
                BoneTransform const* pose)
{
    Vector3 tangentA;
    Vector3 tangentB;
    getBasis(normal, tangentA, tangentB);
    Vector3 positionSum;
    Vector3 tangentSumA;
    Vector3 tangentSumB;
    for (BoneInfluence const& influence : influences) {
        BoneTransform const& bone = pose[influence.bone];
        positionSum += influence.weight * bone.transform(position);
        tangentSumA += influence.weight * bone.rotate(tangentA);
        tangentSumB += influence.weight * bone.rotate(tangentB);
    }
    position = positionSum;
    normal = UVector3(cross(tangentSumA, tangentSumB));
}

smart_ptr<SurfaceGeometryData const> skinned(GeometryData const& geometry, SurfaceGeometryData const& surface,
                                             BoneWeightsData const& weights,
                                             std::vector<BoneTransform> const& pose)
{
    auto result = make_smart<SurfaceGeometryData>();
    result->vertices = geometry.vertices;
    result->normals = surface.normals;
    for (std::size_t i = 0; i < result->vertices.size(); ++i) {
        std::span<BoneInfluence const> const influences = weights.influences(i);
        if (!influences.empty())
            skinVertex(result->vertices[i], result->normals[i], influences, pose.data());
    }
    return result;
}

} // namespace

void ManualAnimator::enter(SGSurfaceGeometryReferenceNode* node)
{
    if (!isSkinned(*node))
        return;
    smart_ptr<SurfaceGeometryData const> const deformed =
        skinned(*node->getGeometry()->get(), *node->getNormals()->get(), *node->getBoneWeights()->get(),
                poseOf(*node));
    auto rest = make_smart<UnanimatedData>(node->getGeometry(), node->getNormals());
    // New wrappers: no cache has seen them, so all that hangs on a wrapper is made for this frame.
    node->setGeometry(make_smart<SharedGeometry>(deformed));
    node->setNormals(make_smart<SharedSurfaceGeometry>(deformed));
    node->setExtraData(ExtraDataKeys::unanimatedData, std::move(rest));
    node->setExtraData(ExtraDataKeys::noVBO, make_smart<NoVBOTag>());
}

void ManualUnAnimator::enter(SGSurfaceGeometryReferenceNode* node)
{
    auto const rest = getExtraData<UnanimatedData>(*node, ExtraDataKeys::unanimatedData);
    if (!rest)
        return;
    node->setGeometry(rest->geometry);
    node->setNormals(rest->normals);
    node->setExtraData(ExtraDataKeys::unanimatedData, nullptr);
}
