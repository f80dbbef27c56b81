#pragma once

#include "OpenGLRenderer/ManualAnimator.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

/// What a skinned surface is drawn from, on its node: wrappers that carry nothing but float arrays, filled
/// anew for each frame and kept from one to the next. It also parks the rest pose meanwhile.
class SkinnedSurface : public UnanimatedData {
public:
    SkinnedSurface();

    /// The node's own, made where there is none. Its wrappers are nobody else's.
    [[nodiscard]] static smart_ptr<SkinnedSurface> of(SGSurfaceGeometryReferenceNode& node);

    /// Moves the rest pose as the node's bones say, into the arrays. The node is at rest and skinned.
    void fill(SGSurfaceGeometryReferenceNode const& node);

    [[nodiscard]] smart_ptr<SharedGeometry> const& deformedGeometry() const { return deformedGeometry_; }
    [[nodiscard]] smart_ptr<SharedSurfaceGeometry> const& deformedNormals() const { return deformedNormals_; }

private:
    void renew();

    smart_ptr<SharedGeometry> deformedGeometry_;
    smart_ptr<SharedSurfaceGeometry> deformedNormals_;
};
