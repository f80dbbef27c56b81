#include "SceneGraph/SGTransformNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGTransformNode::SGTransformNode(smart_ptr<SGNode> parent) : SGNode(std::move(parent))
{
    setKind(SGNodeKind::transform);
}

void SGTransformNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGTransformNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
