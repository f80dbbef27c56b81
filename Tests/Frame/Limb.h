#pragma once

#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

/// An upright tube about the y axis from y = -0.8 to 0.8, open at both ends, and a chain of equally long
/// bones in it, the lowest of which stays. Every vertex is held by four neighbouring bones.
class Limb {
public:
    /// \param bones   1 or more
    /// \param degrees each joint's bend, to alternate sides, about an axis that turns from joint to joint
    /// \param size    of tube and bones, 1 being the size above
    Limb(int bones, double degrees, double size = 1.0);

    smart_ptr<SurfaceGeometryData const> geometry;
    smart_ptr<BoneWeightsData const> weights;
    BoneTransformVector pose;

    /// Gives a surface of that geometry the weights and the pose.
    void moveBy(SGSurfaceGeometryReferenceNode& surface) const;
};

/// How many quads a limb has along it.
[[nodiscard]] int ringsOfLimb(int bones);

/// A tube like a limb's.
/// \param rings  quads along it
[[nodiscard]] smart_ptr<SurfaceGeometryData const> tubeGeometry(int rings, double size = 1.0);

/// Coordinates on such a tube: the picture `repeats` times around and along.
[[nodiscard]] smart_ptr<SharedTextureCoords> tubeCoordinates(int rings, double repeats = 1.0);
