#pragma once

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"

#include <array>
#include <vector>

/// A scene to put things into: background, camera, one light at the viewer's eye.
///
/// The camera sees -1 to 1 in x and y, y up, and -10 to 10 in z, larger z being nearer, without perspective.
struct Stage {
    Stage();

    smart_ptr<SGRootNode> root;
    smart_ptr<SGCameraNode> camera; ///< above what has no light
    smart_ptr<SGLightsNode> lit;    ///< above what has

    static constexpr Color background{0.2F, 0.4F, 0.6F, 1.0F}; ///< (51, 102, 153) in bytes
};

/// A camera like a stage's.
/// \param viewport  pixels, from the lower left corner
[[nodiscard]] smart_ptr<CameraBase> flatCamera(quarl::Rect<int> const& viewport);

/// A lit colour and nothing else.
[[nodiscard]] Material matt(Color const& diffuse);

/// A surface from shared data; each wrapper is its own.
smart_ptr<SGSurfaceGeometryReferenceNode> addSurface(smart_ptr<SGNode> const& parent,
                                                     smart_ptr<SurfaceGeometryData const> const& geometry,
                                                     Material const& material);

/// A square in the plane z = `depth` from (low, low) to (high, high), front towards the viewer. Its vertices
/// go round counter-clockwise from the lower left.
[[nodiscard]] smart_ptr<SurfaceGeometryData const> squareGeometry(double low, double high,
                                                                  double depth = 0.0);

/// A sphere about the origin.
[[nodiscard]] smart_ptr<SurfaceGeometryData const> sphereGeometry(double radius);

smart_ptr<SGQuadNode> addQuad(smart_ptr<SGNode> const& parent, double low, double high, double depth,
                              Color const& color);

smart_ptr<SGCurveGeometryReferenceNode> addCurve(smart_ptr<SGNode> const& parent,
                                                 std::vector<Vector3> const& points, bool closed,
                                                 Color const& color);

smart_ptr<SGTransformNode> addTransform(smart_ptr<SGNode> const& parent, Transform const& transform);

/// A picture whose pixels come row by row, the first row first.
[[nodiscard]] smart_ptr<SharedImage> imageOf(int width, int height,
                                             std::vector<std::array<unsigned char, 3>> const& pixels);

[[nodiscard]] smart_ptr<SharedTextureCoords> textureCoordinates(std::vector<Vector3> const& coordinates);

/// A layer for a square or a quad: the whole picture `repeats` times in both directions, (0, 0) being the
/// first corner.
[[nodiscard]] SGTextureLayer squareLayer(smart_ptr<SharedImage> const& image, double repeats = 1.0);
