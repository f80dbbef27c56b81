#pragma once

#include "SceneGraph/SGSharedData.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

namespace sgview {

/// A shape that surfaces share.
struct SceneShape {
    smart_ptr<SharedGeometry> geometry;
    smart_ptr<SharedSurfaceGeometry> normals;
    smart_ptr<SharedSurfaceGeometry> facets;

    /// A surface of this shape in one colour, ambient and diffuse.
    smart_ptr<SGSurfaceGeometryReferenceNode> addSurface(smart_ptr<SGNode> const& parent,
                                                         Color const& color) const;
};

/// 24 vertices and 12 triangles about the origin, sides along the axes.
[[nodiscard]] SceneShape makeCube(double side);

/// A square in the plane z = 0 about the origin, facing +z.
/// \param vertices  a side, at least 2
[[nodiscard]] SceneShape makeSheet(int vertices, double side);

/// Texture coordinates from 0 to 1 for a sheet of so many vertices a side.
[[nodiscard]] smart_ptr<SharedTextureCoords> makeSheetCoordinates(int vertices);

/// A chequered picture of 64 by 64 pixels, RGBA; every number gives another.
[[nodiscard]] smart_ptr<SharedImage> makeChequers(int number);

/// A colour of its own for every number, never dark.
[[nodiscard]] Color colorOf(int number);

} // namespace sgview
