#pragma once

#include "SceneGraph/SGVisitorInterest.h"
#include "Utilities/smart_ptr.h"

/// A pass over a scene graph: what to do on entering a node of each kind, before its children, and on leaving
/// it.
///
/// An operation that is not overridden forwards to that of the kind it derives from: surfaces and curves to
/// SGGeometryReferenceNode, that and quads to SGGeometryNode, every other kind to the general operation,
/// which does nothing. So enter(SGGeometryNode*) alone sees all that is drawn, and enter(SGNode*) alone sees
/// every node.
///
/// A derived visitor brings the rest back in with `using SGNodeVisitor::enter` and `leave`.
class SGNodeVisitor : public smart_base {
public:
    virtual void enter(SGNode* node);
    virtual void leave(SGNode* node);

    virtual void enter(SGRootNode* node);
    virtual void leave(SGRootNode* node);
    virtual void enter(SGOrderedGroupNode* node);
    virtual void leave(SGOrderedGroupNode* node);
    virtual void enter(SGCameraNode* node);
    virtual void leave(SGCameraNode* node);
    virtual void enter(SGLightsNode* node);
    virtual void leave(SGLightsNode* node);
    virtual void enter(SGTransformNode* node);
    virtual void leave(SGTransformNode* node);
    virtual void enter(SGZTransformNode* node);
    virtual void leave(SGZTransformNode* node);
    virtual void enter(SGGeometryNode* node);
    virtual void leave(SGGeometryNode* node);
    virtual void enter(SGQuadNode* node);
    virtual void leave(SGQuadNode* node);
    virtual void enter(SGGeometryReferenceNode* node);
    virtual void leave(SGGeometryReferenceNode* node);
    virtual void enter(SGSurfaceGeometryReferenceNode* node);
    virtual void leave(SGSurfaceGeometryReferenceNode* node);
    virtual void enter(SGCurveGeometryReferenceNode* node);
    virtual void leave(SGCurveGeometryReferenceNode* node);

    /// The kinds for which the operations do anything, so that walks can leave out the rest. A class that
    /// does not say is shown every node; VisitorInterest::of(*this) reads it off the class.
    [[nodiscard]] virtual SGVisitorInterest interest() const { return SGVisitorInterest::everything(); }
};
