#include "SceneGraph/SGCameraNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGCameraNode::SGCameraNode(smart_ptr<SGNode> parent) : SGNode(std::move(parent))
{
    setKind(SGNodeKind::camera);
}

void SGCameraNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGCameraNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
