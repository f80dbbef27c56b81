#pragma once

#include "SceneGraph/SGNode.h"
#include "Utilities/Color.h"

/// The top of a scene graph, and how a frame of it starts.
class SGRootNode : public SGNode {
public:
    SGRootNode();

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    bool clearColor = true; ///< clear the colour buffer to `color`
    bool clearDepth = true; ///< clear the depth buffer
    Color color;
};
