#include "SceneGraph/SGGeometryNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGGeometryNode::SGGeometryNode(smart_ptr<SGNode> parent) : SGNode(std::move(parent))
{
    setKind(SGNodeKind::geometry);
}

void SGGeometryNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGGeometryNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
