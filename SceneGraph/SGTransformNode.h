#pragma once

#include "Maths/Transform.h"
#include "SceneGraph/SGNode.h"

/// Places what is below it. A scale that is not greater than 0 mirrors.
class SGTransformNode : public SGNode {
public:
    explicit SGTransformNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    Transform transform;
};
