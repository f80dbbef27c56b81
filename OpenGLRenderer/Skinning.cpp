#include "OpenGLRenderer/Skinning.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/ViewMatrixData.h"

bool isSkinned(SGSurfaceGeometryReferenceNode const& node)
{
    return node.getBoneTransforms() && node.getBoneWeights() && !poseOf(node).empty();
}

std::vector<BoneTransform> const& poseOf(SGSurfaceGeometryReferenceNode const& node)
{
    return node.getBoneTransforms()->get().transforms;
}

Matrix3 viewRotation(SGSurfaceGeometryReferenceNode const& node)
{
    auto const view = getExtraData<ViewMatrixData>(node, ExtraDataKeys::viewMatrix);
    if (!view)
        return {};
    Matrix3 const rotation(view->matrix);
    return determinant(rotation) < 0.0 ? rotation * -1.0 : rotation;
}
