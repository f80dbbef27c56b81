#pragma once

#include "SceneGraph/CameraBase.h"
#include "SceneGraph/SGNode.h"

/// Sets the camera for what is below it: a camera replaces model-view and projection, so transforms above it
/// do not count.
class SGCameraNode : public SGNode {
public:
    explicit SGCameraNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    smart_ptr<CameraBase> camera; ///< not null while the node is drawn
};
