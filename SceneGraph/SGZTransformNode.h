#pragma once

#include "SceneGraph/SGNode.h"

/// Draws what is below it into a part of the depth range, with depth tests of its own.
///
/// The range is in normalised device depth, -1 to 1 from near to far: z becomes lower * w + (upper - lower) *
/// z. For the part [a, b] of the depth buffer's 0 to 1, lower is a + b - 1 and upper is 2 b - 1. Stands below
/// the camera, which replaces the projection.
class SGZTransformNode : public SGNode {
public:
    explicit SGZTransformNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    bool clearDepth = false; ///< clear the depth buffer first
    bool depthTest = true;
    bool depthWrite = true;
    double lower = 0.0;
    double upper = 1.0;
};
