#pragma once

#include "Viewer/Import/Model.h"

namespace sgview {

/// A limb of two bones along y with a skinned surface, and a plain triangle beside it.
///
/// Node 0 is the root, node 1 the upper bone at the origin, node 2 the lower bone at (0, 1, 0), node 3
/// carries the plain surface at (5, 0, 0). The skinned surface has vertices at (0, 0, 0), (0, 1, 0) and (0,
/// 2, 0), held by the upper bone alone, by both alike, and by the lower bone alone; their normals are +x. The
/// animation turns the lower bone by a quarter about z within a second.
[[nodiscard]] Model makeLimb();

} // namespace sgview
