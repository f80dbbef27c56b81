#pragma once

#include "Viewer/Import/Model.h"

namespace sgview {

/// What counts in a model.
struct ModelCounts {
    std::size_t nodes = 0;
    std::size_t surfaces = 0;
    std::size_t curves = 0;
    std::size_t vertices = 0;
    std::size_t triangles = 0;
    std::size_t bones = 0; ///< that move a vertex, each once, however many parts of a split surface it moves
    std::size_t textures = 0;
};

/// \param model  as imported, with its arrays
[[nodiscard]] ModelCounts countsOf(Model const& model);

} // namespace sgview
