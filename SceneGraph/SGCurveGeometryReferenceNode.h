#pragma once

#include "SceneGraph/SGGeometryReferenceNode.h"

/// Draws a line through the points of its geometry, in the material's ambient colour, always unlit.
class SGCurveGeometryReferenceNode : public SGGeometryReferenceNode {
public:
    explicit SGCurveGeometryReferenceNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;
};
