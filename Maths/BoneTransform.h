#pragma once

#include "Maths/Matrix3.h"
#include "Maths/Vector3.h"

/// What one bone does to a vertex of the rest pose: rotation first, then translation. A file's bone may scale
/// or shear as well; then `rotation` is that linear map, and normals skinned through two tangents stay right.
struct BoneTransform {
    Matrix3 rotation;
    Vector3 translation;

    [[nodiscard]] constexpr Vector3 rotate(Vector3 const& direction) const { return rotation * direction; }
    [[nodiscard]] constexpr Vector3 transform(Vector3 const& point) const
    {
        return rotation * point + translation;
    }

    constexpr bool operator==(BoneTransform const&) const = default;
};
