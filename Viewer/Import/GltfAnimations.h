#pragma once

#include "Viewer/Import/GltfDocument.h"
#include "Viewer/Import/GltfNodes.h"

#include <vector>

namespace sgview {

/// The animations of a glTF file: LINEAR, STEP and CUBICSPLINE tracks of translation, rotation and scale. A
/// channel that is broken, or moves something else, is left out with a warning.
[[nodiscard]] std::vector<ModelAnimation> readGltfAnimations(GltfDocument const& document,
                                                             GltfNodes const& nodes, Warnings& warnings);

} // namespace sgview
