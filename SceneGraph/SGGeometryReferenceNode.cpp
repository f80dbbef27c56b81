#include "SceneGraph/SGGeometryReferenceNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGGeometryReferenceNode::SGGeometryReferenceNode(smart_ptr<SGNode> parent) : SGGeometryNode(std::move(parent))
{
    setKind(SGNodeKind::geometryReference);
}

void SGGeometryReferenceNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGGeometryReferenceNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
