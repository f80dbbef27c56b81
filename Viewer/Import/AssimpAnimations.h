#pragma once

#include "Viewer/Import/Model.h"
#include "Viewer/Import/Warnings.h"

#include <map>
#include <string>

struct aiScene;

namespace sgview {

/// The animations that Assimp read, ticks turned into seconds; one whose keys begin before 0 is moved there.
/// A track with a broken key is left out with a warning. Nodes that are animated lose a matrix of their own:
/// the nearest translation, rotation and scale are their rest.
void readAssimpAnimations(aiScene const& scene, std::map<std::string, Index> const& nodesByName, Model& model,
                          Warnings& warnings);

} // namespace sgview
