#include "SceneGraph/SGLightsNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGLightsNode::SGLightsNode(smart_ptr<SGNode> parent) : SGNode(std::move(parent))
{
    setKind(SGNodeKind::lights);
}

void SGLightsNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGLightsNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
