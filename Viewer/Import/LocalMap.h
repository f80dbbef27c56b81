#pragma once

#include "Viewer/Import/Model.h"

namespace sgview {

/// Gives a node the local map `matrix`: as translation, rotation and scale where these say the same within
/// `tolerance` (relative to the largest element of the linear part), else as a matrix, with the nearest parts
/// beside it. A map that is not finite becomes the identity.
/// \return whether the map was finite
bool setLocalMap(ModelNode& node, Matrix const& matrix, double tolerance);

/// The node's local map as a matrix.
[[nodiscard]] Matrix localMap(ModelNode const& node);

/// The rotation of the same direction with unit length; none for one without direction.
[[nodiscard]] Quaternion normalised(Quaternion const& q);

/// Length above 0 and finite.
[[nodiscard]] bool hasDirection(Quaternion const& q);

/// Whether all elements are finite.
[[nodiscard]] bool isFinite(Matrix const& matrix);

} // namespace sgview
