#pragma once

#include "Viewer/Import/MaterialTable.h"

namespace sgview {

/// `number` within 0 to 1; 0 for what is no number.
[[nodiscard]] float fraction(double number);

/// Colours and shininess for a base colour with metalness and roughness, each 0 to 1 (glTF 2.0, appendix B).
void setMetallic(ModelMaterial& material, Colour const& base, double metallic, double roughness);

/// The same for diffuse and specular colour with glossiness, 0 to 1 (KHR_materials_pbrSpecularGlossiness).
void setGlossy(ModelMaterial& material, Colour const& diffuse, Colour const& specular, double glossiness);

} // namespace sgview
