#include "SceneGraph/SGOrderedGroupNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <utility>

SGOrderedGroupNode::SGOrderedGroupNode(smart_ptr<SGNode> parent) : SGNode(std::move(parent))
{
    setKind(SGNodeKind::orderedGroup);
}

void SGOrderedGroupNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGOrderedGroupNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
