#pragma once

#include "Viewer/Import/Model.h"

namespace sgview {

/// Gives a surface normals of its own: at each vertex the mean of the facets around it, weighted by their
/// angles there (Thuermer and Wuethrich, "Computing Vertex Normals from Polygonal Facets", Journal of
/// Graphics Tools 3(1), 1998). Facets that meet at a sharper angle than the crease do not count for one
/// another; the vertex is doubled there. Vertices at one place count as one.
///
/// Expects facets in range and finite positions.
/// \param creaseCosine  of the angle between two facets' normals up to which an edge is smooth
void makeNormals(ModelSurface& surface, double creaseCosine);

/// Replaces normals that are not finite or have no length by those of the facets around, and makes all of
/// them unit length. Expects as many normals as positions.
/// \return how many were replaced
std::size_t repairNormals(ModelSurface& surface);

/// Turns all normals around where most facets show them their back: both sides of such a surface would be
/// drawn as if lit from behind. Expects unit normals and facets in range.
/// \return whether it did
bool turnOpposedNormals(ModelSurface& surface);

/// Makes vertex i what vertex `sources[i]` was, in every per-vertex list; the facets are left alone.
void takeVertices(ModelSurface& surface, std::vector<std::int32_t> const& sources);

} // namespace sgview
