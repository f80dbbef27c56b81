#pragma once

#include "Viewer/Import/GltfDocument.h"
#include "Viewer/Import/Model.h"

#include <vector>

namespace sgview {

/// A glTF file's node hierarchy in a model's order, parents first.
struct GltfNodes {
    std::vector<ModelNode> nodes;
    std::vector<Index> indexOf; ///< by the file's number; none for nodes left out
    std::vector<int> numberOf;  ///< the way back
    std::vector<bool> drawn;    ///< by index: part of the scene, not just of a skeleton outside it
};

/// The default scene's nodes (the first scene's where none is the default, all where there is none), and
/// those of skeletons outside it.
///
/// \throws ImportError  broken: a node that does not exist, has two parents, or is its own ancestor
[[nodiscard]] GltfNodes readGltfNodes(GltfDocument const& document, Warnings& warnings);

} // namespace sgview
