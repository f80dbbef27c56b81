#include "SceneGraph/SGLightsNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGLightsNode::SGLightsNode(smart_ptr<SGNode> parent) : SGNode(std::move(parent)) {}

void SGLightsNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGLightsNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
