#pragma once

#include "Maths/Matrix.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <string>
#include <vector>

namespace sgview {

/// A drawn node, and where the transforms above it put it.
template <typename Node>
struct Placed {
    Node const* node;
    Matrix map;
};

/// What a scene draws, in order, and every node that it consists of.
struct SceneContent {
    std::vector<SGNode const*> nodes;
    std::vector<Placed<SGCurveGeometryReferenceNode>> curves;
    std::vector<Placed<SGSurfaceGeometryReferenceNode>> surfaces;

    /// The points of a curve in world space.
    [[nodiscard]] std::vector<Vector3> pointsOf(std::size_t curve) const;

    /// The names of the surfaces, in order, with blanks between.
    [[nodiscard]] std::string surfaceNames() const;
};

[[nodiscard]] SceneContent contentOf(smart_ptr<SGRootNode> const& root);

} // namespace sgview
