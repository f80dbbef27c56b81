#pragma once

#include "Maths/Matrix3.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <vector>

/// Whether a surface is moved by bones: whether it has bone weights and a pose that is not empty.
[[nodiscard]] inline bool isSkinned(SGSurfaceGeometryReferenceNode const& node)
{
    return node.getBoneTransforms() && node.getBoneWeights() &&
           !node.getBoneTransforms()->get().transforms.empty();
}

/// The pose of a skinned surface: what each bone does, by bone index.
[[nodiscard]] std::vector<BoneTransform> const& poseOf(SGSurfaceGeometryReferenceNode const& node);

/// What turns the surface's normals to eye space: the linear part of its ViewMatrixData, negated where that
/// mirrors; the identity where it carries none.
[[nodiscard]] Matrix3 viewRotation(SGSurfaceGeometryReferenceNode const& node);
