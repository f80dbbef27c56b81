#pragma once

#include "Viewer/Import/MaterialTable.h"
#include "Viewer/Import/TextureStore.h"

#include <string_view>
#include <vector>

struct aiScene;

namespace sgview {

/// Fixed-function materials for those that Assimp read.
///
/// What files leave out or get wrong is filled in as a person would expect: no ambient colour means that of
/// the diffuse light, a texture on black is shown, a wholly transparent material is not, highlights without
/// an exponent are left out.
/// \param relativePrefix  what the format puts before texture names that start from the model's folder
/// \return the number in `table` of each material; at least one
[[nodiscard]] std::vector<std::size_t> readAssimpMaterials(aiScene const& scene, MaterialTable& table,
                                                           TextureStore& textures,
                                                           std::string_view relativePrefix,
                                                           Warnings& warnings);

} // namespace sgview
