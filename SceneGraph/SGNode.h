#pragma once

#include "SceneGraph/SGNodeKind.h"
#include "SceneGraph/SGObject.h"
#include "Utilities/smart_ptr.h"

#include <cstdint>

class SGNode;
class SGNodeVisitor;

/// A node's place in its parent's list of children.
class SGNodeListElement {
private:
    friend class SGNode;
    SGNode* previous = nullptr;
    SGNode* next = nullptr;
};

/// A node of the tree. A parent owns its children; a node has one parent at most.
///
/// Trees of any depth may be walked and destroyed: nothing recurses.
class SGNode : public SGObject {
public:
    /// A node under `parent`, as its last child, or on its own where `parent` is null or held by nobody else.
    explicit SGNode(smart_ptr<SGNode> parent);

    ~SGNode() override;

    /// Calls the visitor's operation for this node's most derived kind.
    virtual void acceptEnter(SGNodeVisitor* visitor) = 0;
    virtual void acceptLeave(SGNodeVisitor* visitor) = 0;

    /// Moves the node, with what is below it, under another parent.
    /// \param first  as the first child; else as the last
    /// Throws std::invalid_argument for a null parent and for one in the node's own subtree.
    void reparent(smart_ptr<SGNode> newParent, bool first);

    /// Takes the node out of its parent's list; it goes unless somebody else holds it.
    void deparent();

    [[nodiscard]] SGNode* getParent() const { return parent_; }
    [[nodiscard]] SGNode* getFirstChild() const { return firstChild_; }
    [[nodiscard]] SGNode* getNextSibling() const { return siblings_.next; }

    /// The kind as which the node accepts visitors.
    [[nodiscard]] SGNodeKind kind() const { return kind_; }

    /// A number that changes whenever a node is put into a tree or taken out of one, in the whole process.
    /// While it stays, nodes found in a tree are still there.
    [[nodiscard]] static std::uint64_t treeVersion();

protected:
    /// For the constructor of each class that accepts visitors as another kind than its base.
    void setKind(SGNodeKind kind) { kind_ = kind; }

private:
    void link(SGNode* parent, bool first);
    void unlink();
    void adoptChildrenOf(SGNode* node);

    SGNode* parent_ = nullptr;
    SGNode* firstChild_ = nullptr;
    SGNode* lastChild_ = nullptr;
    SGNodeListElement siblings_;
    SGNodeKind kind_ = SGNodeKind::other;
};
