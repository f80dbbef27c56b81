#include "OpenGLRenderer/Skinning.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/ViewMatrixData.h"

std::vector<BoneTransform> const& poseOf(SGSurfaceGeometryReferenceNode const& node)
{
    return node.getBoneTransforms()->get().transforms;
}

Matrix3 viewRotation(SGSurfaceGeometryReferenceNode const& node)
{
    auto const* const view = findExtraData<ViewMatrixData>(node, ExtraDataKeys::viewMatrix);
    if (!view)
        return {};
    Matrix3 const rotation(view->matrix);
    return determinant(rotation) < 0.0 ? rotation * -1.0 : rotation;
}
