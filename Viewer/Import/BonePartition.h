#pragma once

#include "Viewer/Import/Model.h"

#include <vector>

namespace sgview {

/// Parts of a surface that each use few bones: for every part its triangles in ascending order. Each triangle
/// is in one part.
using BonePartition = std::vector<std::vector<std::size_t>>;

// Both expect a surface with a skin, and that `mostBones` is no less than any one triangle uses: 12.

/// Few parts, and few vertices that are in several: a part takes on what needs the fewest bones besides its
/// own.
[[nodiscard]] BonePartition partitionByBones(ModelSurface const& surface, std::size_t mostBones);

/// Parts that, one after another, have the triangles in the surface's order, which decides how blended ones
/// look.
[[nodiscard]] BonePartition partitionByBonesInOrder(ModelSurface const& surface, std::size_t mostBones);

/// The bones that hold any of a surface's vertices, ascending.
[[nodiscard]] std::vector<Index> bonesOf(ModelSurface const& surface);

} // namespace sgview
