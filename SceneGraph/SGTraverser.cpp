#include "SceneGraph/SGTraverser.h"

#include "SceneGraph/SGNode.h"

#include <utility>

SGTraverser::SGTraverser(smart_ptr<SGNodeVisitor> visitor) : visitor_(std::move(visitor)) {}

void SGTraverser::enter(SGNode* top)
{
    top->acceptEnter(visitor_.get());
    SGNode* node = top->getFirstChild();
    while (node) {
        node->acceptEnter(visitor_.get());
        SGNode* next = node->getFirstChild();
        while (!next && node != top) {
            next = node->getNextSibling();
            SGNode* const parent = node->getParent();
            node->acceptLeave(visitor_.get()); // may take the node out of the tree, and so destroy it
            node = parent;
        }
        node = next;
    }
}

void SGTraverser::leave(SGNode* top)
{
    top->acceptLeave(visitor_.get());
}
