#include "SceneGraph/SGRootNode.h"

#include "SceneGraph/SGNodeVisitor.h"

SGRootNode::SGRootNode() : SGNode(smart_ptr<SGNode>()) {}

void SGRootNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGRootNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}
