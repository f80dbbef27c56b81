#pragma once

#include "SceneGraph/SGNodeVisitor.h"

/// Walks a whole tree for the visitor it holds: enters a node, walks its children in order, leaves it.
///
/// Entering a node with the traverser enters it and walks everything below; leaving it leaves it. So every
/// `enter` of the held visitor is paired with one `leave`, the top node's included. The walk does not
/// recurse. While it runs, the held visitor may add children to the node it enters, and take out the node it
/// leaves; no other change to the tree's shape.
class SGTraverser : public SGNodeVisitor {
public:
    /// \param visitor  not null
    explicit SGTraverser(smart_ptr<SGNodeVisitor> visitor);

    /// The same walk, leaving included, for a visitor that nobody need hold.
    static void walk(SGNode& top, SGNodeVisitor& visitor);

    [[nodiscard]] smart_ptr<SGNodeVisitor> const& getVisitor() const { return visitor_; }

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGNode* top) override;
    void leave(SGNode* top) override;

private:
    static void enterAll(SGNode* top, SGNodeVisitor* visitor);

    smart_ptr<SGNodeVisitor> visitor_;
};
