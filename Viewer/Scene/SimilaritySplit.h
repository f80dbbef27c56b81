#pragma once

#include "Maths/Matrix.h"
#include "Maths/Transform.h"

namespace sgview {

/// An affine map as a similarity, which a transform node can hold, after what is left for the geometry
/// itself.
struct SimilaritySplit {
    Transform outer; ///< scale never 0; negative where the map mirrors
    Matrix3 inner;   ///< the map is outer * inner; its determinant is not negative
};

/// Splits an affine map. For rotations that vary over a fixed stretching the inner part stays the same
/// (Gram-Schmidt on the columns), so that stretched geometry can be kept from frame to frame. A map with
/// elements that are not finite collapses everything onto the origin.
[[nodiscard]] SimilaritySplit splitSimilarity(Matrix const& map);

/// The transform that leads from `parent` to `child`, both of them outer parts of a split.
[[nodiscard]] Transform relativeTransform(Transform const& parent, Transform const& child);

} // namespace sgview
