#pragma once

#include "Viewer/Import/GltfDocument.h"
#include "Viewer/Import/MaterialTable.h"
#include "Viewer/Import/TextureStore.h"

#include <vector>

namespace sgview {

/// Fixed-function materials for those of a glTF file. Base colour becomes ambient and diffuse colour;
/// specular colour is the reflectance at normal incidence (glTF 2.0, appendix B), less the rougher the
/// surface is, and shininess the Blinn-Phong exponent of that roughness.
///
/// \return the number in `table` of each material, then that of the default material
[[nodiscard]] std::vector<std::size_t> readGltfMaterials(GltfDocument const& document, MaterialTable& table,
                                                         TextureStore& textures, Warnings& warnings);

} // namespace sgview
