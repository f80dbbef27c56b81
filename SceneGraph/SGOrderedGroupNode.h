#pragma once

#include "SceneGraph/SGNode.h"

/// Groups nodes that are drawn in the order of the list.
class SGOrderedGroupNode : public SGNode {
public:
    explicit SGOrderedGroupNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;
};
