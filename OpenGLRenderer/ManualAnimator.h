#pragma once

#include "SceneGraph/SGExtraData.h"
#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGSharedData.h"

#include <utility>

/// A skinned surface's rest pose, parked on its node while a deformed copy is drawn.
class UnanimatedData : public SGExtraData {
public:
    UnanimatedData(smart_ptr<SharedGeometry> geometry_, smart_ptr<SharedSurfaceGeometry> normals_)
        : geometry(std::move(geometry_)), normals(std::move(normals_))
    {
    }

    smart_ptr<SharedGeometry> geometry;
    smart_ptr<SharedSurfaceGeometry> normals;
};

/// Skins on the processor: gives every surface with bone weights and a pose that is not empty a deformed copy
/// of its geometry and normals for this frame, and keeps it off buffer objects.
///
/// Each vertex becomes the sum of its bones' images of it, by weight; weights are used as given. Normals are
/// skinned through two tangents. A vertex without influences stays at rest.
class ManualAnimator : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
};

/// Puts the rest pose back.
class ManualUnAnimator : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
};
