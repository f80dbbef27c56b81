#pragma once

#include "Viewer/Import/Model.h"
#include "Viewer/Import/Warnings.h"

namespace sgview {

/// Where a file has no normals, an edge between facets is smooth if they meet at less than this angle.
enum class Crease {
    everywhere, ///< each facet on its own, as glTF 2.0 (section 3.7.2.1) wants it
    sharp,      ///< 60 degrees: round things look round, boxes keep their edges
};

/// Brings a surface into the shape that the renderer assumes: facets whose vertices exist, are finite and are
/// three; a unit normal for every vertex; finite coordinates; no vertex that no facet uses.
///
/// Expects per-vertex lists as long as `positions`, or empty `normals`. A surface may come out without
/// facets.
void finishSurface(ModelSurface& surface, Crease crease, Warnings& warnings);

} // namespace sgview
