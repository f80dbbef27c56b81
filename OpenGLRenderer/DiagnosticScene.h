#pragma once

#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSharedData.h"

/// The scene on which the graphics diagnostic tries what a card can do: skinned, lit surfaces, each of 10,000
/// vertices and 19,602 triangles, before white.
namespace Diagnostic {

/// The surface that all of the scene's share: a rippled square of 0.3 by 0.3 units, always the same.
[[nodiscard]] smart_ptr<SurfaceGeometryData> createRandomSurface();

/// The scene, with as many surfaces as the renderer draws at about 80 frames per second by its current
/// strategy: 1 and on in powers of two up to 256. Draws frames to find out, and logs the number. The surfaces
/// have weights for two bones and no pose.
[[nodiscard]] smart_ptr<SGRootNode> createTestSceneGraph();

/// Gives every surface of a scene a pose.
void animateSceneGraph(smart_ptr<SGRootNode> const& root, smart_ptr<SharedBoneTransforms> const& bones);

/// Drops all that passes have hung on the nodes of a scene, so that those of another strategy start afresh.
void cleanSceneGraph(smart_ptr<SGRootNode> const& root);

} // namespace Diagnostic
