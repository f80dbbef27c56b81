#include "SceneGraph/SGNode.h"

#include <atomic>
#include <stdexcept>

namespace {

// Trees may be built on several threads.
std::atomic<std::uint64_t> changes = 0;

} // namespace

SGNode::SGNode(smart_ptr<SGNode> parent)
{
    // A parent that nobody else holds goes with the argument, and would take the half-built node with it.
    if (parent && parent->referenceCount() > 1) {
        addRef(); // the parent's; a temporary smart_ptr would drop the count back to 0 and destroy the node
        link(parent.get(), false);
    }
}

SGNode::~SGNode()
{
    if (parent_) // a derived constructor threw
        unlink();
    while (SGNode* const child = firstChild_) {
        if (child->referenceCount() == 1)
            adoptChildrenOf(child); // its destructor then finds none: a deep tree must not recurse
        child->unlink();
        child->release();
    }
}

void SGNode::reparent(smart_ptr<SGNode> newParent, bool first)
{
    if (!newParent)
        throw std::invalid_argument("SGNode::reparent: no parent given");
    for (SGNode const* node = newParent.get(); node; node = node->parent_)
        if (node == this)
            throw std::invalid_argument("SGNode::reparent: a node cannot move below itself");
    if (parent_)
        unlink();
    else
        addRef();
    link(newParent.get(), first);
}

void SGNode::deparent()
{
    if (!parent_)
        return;
    unlink();
    release();
}

std::uint64_t SGNode::treeVersion()
{
    return changes.load(std::memory_order_relaxed);
}

void SGNode::link(SGNode* parent, bool first)
{
    changes.fetch_add(1, std::memory_order_relaxed);
    parent_ = parent;
    siblings_.previous = first ? nullptr : parent->lastChild_;
    siblings_.next = first ? parent->firstChild_ : nullptr;
    (siblings_.previous ? siblings_.previous->siblings_.next : parent->firstChild_) = this;
    (siblings_.next ? siblings_.next->siblings_.previous : parent->lastChild_) = this;
}

void SGNode::unlink()
{
    changes.fetch_add(1, std::memory_order_relaxed);
    (siblings_.previous ? siblings_.previous->siblings_.next : parent_->firstChild_) = siblings_.next;
    (siblings_.next ? siblings_.next->siblings_.previous : parent_->lastChild_) = siblings_.previous;
    siblings_ = SGNodeListElement();
    parent_ = nullptr;
}

void SGNode::adoptChildrenOf(SGNode* node)
{
    while (SGNode* const child = node->firstChild_) {
        child->unlink();
        child->link(this, false);
    }
}
