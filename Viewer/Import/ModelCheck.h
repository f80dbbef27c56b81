#pragma once

#include "Viewer/Import/Model.h"

#include <string_view>

namespace sgview {

/// Most texture layers that a surface may have.
inline constexpr std::size_t mostLayers = 8;
/// Most texture layers of a surface with a skin.
inline constexpr std::size_t mostLayersOfSkinned = 6;

/// Most bones of a skin: the shader assets hold no more, on the smallest cards that offer shaders.
inline constexpr std::size_t mostBonesOfSkin = 56;

/// Checks that a model keeps every promise of Model.h: indices in range, parents before children, lists of
/// equal length, facets in threes, finite numbers, unit normals and rotations, weights summing to 1, colours
/// and shininess in range, a picture and coordinates for every layer, few enough layers and bones, times in
/// ascending order. Trusts nothing, and needs no more stack than a loop.
///
/// \param file  for the message
/// \throws ImportError  broken
void checkModel(Model const& model, std::string_view file);

} // namespace sgview
