#include "SceneGraph/SGQuadNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGQuadNode::SGQuadNode(smart_ptr<SGNode> parent) : SGGeometryNode(std::move(parent))
{
    setKind(SGNodeKind::quad);
}

void SGQuadNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGQuadNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
