#include "SceneGraph/SGRootNode.h"

#include "SceneGraph/SGNodeVisitor.h"

SGRootNode::SGRootNode() : SGNode(smart_ptr<SGNode>())
{
    setKind(SGNodeKind::root);
}

void SGRootNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGRootNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
