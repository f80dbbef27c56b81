#include "SceneGraph/SGZTransformNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGZTransformNode::SGZTransformNode(smart_ptr<SGNode> parent) : SGNode(std::move(parent))
{
    setKind(SGNodeKind::zTransform);
}

void SGZTransformNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGZTransformNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
