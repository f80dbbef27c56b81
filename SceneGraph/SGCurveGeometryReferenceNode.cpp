#include "SceneGraph/SGCurveGeometryReferenceNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGCurveGeometryReferenceNode::SGCurveGeometryReferenceNode(smart_ptr<SGNode> parent)
    : SGGeometryReferenceNode(std::move(parent))
{
    setKind(SGNodeKind::curve);
}

void SGCurveGeometryReferenceNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGCurveGeometryReferenceNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
