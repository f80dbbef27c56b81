#include "SceneGraph/SGTraverser.h"

#include "SceneGraph/SGNode.h"

#include <utility>

SGTraverser::SGTraverser(smart_ptr<SGNodeVisitor> visitor) : visitor_(std::move(visitor)) {}

void SGTraverser::walk(SGNode& top, SGNodeVisitor& visitor)
{
    enterAll(&top, &visitor);
    top.acceptLeave(&visitor);
}

void SGTraverser::enter(SGNode* top)
{
    enterAll(top, visitor_.get());
}

void SGTraverser::leave(SGNode* top)
{
    top->acceptLeave(visitor_.get());
}

void SGTraverser::enterAll(SGNode* top, SGNodeVisitor* visitor)
{
    SGVisitorInterest const interest = visitor->interest();
    top->acceptEnter(visitor);
    SGNode* node = top->getFirstChild();
    while (node) {
        if (interest.enters(node->kind()))
            node->acceptEnter(visitor);
        SGNode* next = node->getFirstChild();
        while (!next && node != top) {
            next = node->getNextSibling();
            SGNode* const parent = node->getParent();
            if (interest.leaves(node->kind()))
                node->acceptLeave(visitor); // may take the node out of the tree, and so destroy it
            node = parent;
        }
        node = next;
    }
}
