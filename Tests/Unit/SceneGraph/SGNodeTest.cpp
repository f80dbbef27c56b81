#include "Tests/Unit/SceneGraph/NodeKinds.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <utility>

namespace {

using Group = SGOrderedGroupNode;

std::vector<SGNode*> childrenOf(SGNode const& node)
{
    std::vector<SGNode*> children;
    for (SGNode* child = node.getFirstChild(); child; child = child->getNextSibling()) {
        EXPECT_EQ(child->getParent(), &node);
        children.push_back(child);
    }
    return children;
}

class CountedNode : public SGOrderedGroupNode {
public:
    explicit CountedNode(smart_ptr<SGNode> parent) : SGOrderedGroupNode(std::move(parent)) { ++alive; }
    CountedNode(CountedNode const&) = delete;
    CountedNode& operator=(CountedNode const&) = delete;
    ~CountedNode() override { --alive; }

    static int alive;
};
int CountedNode::alive = 0;

class ThrowingNode : public SGOrderedGroupNode {
public:
    explicit ThrowingNode(smart_ptr<SGNode> parent) : SGOrderedGroupNode(std::move(parent))
    {
        throw std::runtime_error("no");
    }
};

/// A constructor that passes itself around before it is done.
class SelfTouchingNode : public SGOrderedGroupNode {
public:
    explicit SelfTouchingNode(smart_ptr<SGNode> const& parent) : SGOrderedGroupNode(parent)
    {
        smart_ptr<SGNode> const self(this);
    }
};

} // namespace

TEST(SGNode, IsConstructedAsTheLastChild)
{
    auto const parent = make_smart<Group>(nullptr);
    auto const a = make_smart<Group>(parent);
    auto const b = make_smart<Group>(parent);
    auto const c = make_smart<Group>(parent);
    EXPECT_THAT(childrenOf(*parent), testing::ElementsAre(a.get(), b.get(), c.get()));
}

TEST(SGNode, BelongsToItsParent)
{
    auto parent = make_smart<Group>(nullptr);
    auto child = make_smart<CountedNode>(parent);
    EXPECT_EQ(child->referenceCount(), 2);
    child.reset();
    EXPECT_EQ(CountedNode::alive, 1);
    parent.reset();
    EXPECT_EQ(CountedNode::alive, 0);
}

TEST(SGNode, OutlivesItsParentWhileSomebodyHoldsIt)
{
    auto parent = make_smart<Group>(nullptr);
    auto const child = make_smart<CountedNode>(parent);
    auto const grandchild = make_smart<CountedNode>(child);
    parent.reset();
    EXPECT_EQ(CountedNode::alive, 2);
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(child->getNextSibling(), nullptr);
    EXPECT_EQ(child->referenceCount(), 1);
    EXPECT_THAT(childrenOf(*child), testing::ElementsAre(grandchild.get()));
}

TEST(SGNode, DestroysItsWholeSubtreeButWhatOthersHold)
{
    auto root = make_smart<CountedNode>(nullptr);
    auto middle = make_smart<CountedNode>(root);
    auto held = make_smart<CountedNode>(middle);
    addChild<CountedNode>(held);
    addChild<CountedNode>(middle);
    middle.reset();
    EXPECT_EQ(CountedNode::alive, 5);
    root.reset();
    EXPECT_EQ(CountedNode::alive, 2);
    EXPECT_EQ(held->getParent(), nullptr);
    held.reset();
    EXPECT_EQ(CountedNode::alive, 0);
}

TEST(SGNode, StandsAloneUnderAParentThatNobodyElseHolds)
{
    auto const orphan = make_smart<CountedNode>(smart_ptr<SGNode>(make_smart<CountedNode>(nullptr)));
    EXPECT_EQ(CountedNode::alive, 1);
    EXPECT_EQ(orphan->getParent(), nullptr);
    EXPECT_EQ(orphan->referenceCount(), 1);

    auto parent = make_smart<CountedNode>(nullptr);
    auto const moved = make_smart<CountedNode>(std::move(parent));
    EXPECT_EQ(CountedNode::alive, 2);
    EXPECT_EQ(moved->getParent(), nullptr);
}

TEST(SGNode, GoesUnderAParentThatOnlyItsOwnParentHolds)
{
    auto const grandparent = make_smart<Group>(nullptr);
    SGNode* const parent = addChild<Group>(grandparent);
    auto const child = make_smart<Group>(smart_ptr<SGNode>(parent));
    EXPECT_EQ(child->getParent(), parent);
}

TEST(SGNode, ThatThrowsWhileItIsConstructedLeavesNoTrace)
{
    auto const parent = make_smart<Group>(nullptr);
    auto const before = make_smart<Group>(parent);
    EXPECT_THROW(make_smart<ThrowingNode>(parent), std::runtime_error);
    auto const after = make_smart<Group>(parent);
    EXPECT_THAT(childrenOf(*parent), testing::ElementsAre(before.get(), after.get()));
    EXPECT_EQ(parent->referenceCount(), 1);
}

TEST(SGNode, MayHandItselfAroundWhileItIsConstructedUnderAParent)
{
    auto const parent = make_smart<Group>(nullptr);
    auto const child = make_smart<SelfTouchingNode>(parent);
    EXPECT_EQ(child->referenceCount(), 2);
    EXPECT_EQ(child->getParent(), parent.get());
}

TEST(SGNode, MovesToTheFrontOrTheBackOfAnotherParent)
{
    auto const from = make_smart<Group>(nullptr);
    auto const to = make_smart<Group>(nullptr);
    auto const a = make_smart<Group>(from);
    auto const b = make_smart<Group>(from);
    auto const c = make_smart<Group>(from);
    auto const there = make_smart<Group>(to);
    b->reparent(to, true);
    EXPECT_THAT(childrenOf(*from), testing::ElementsAre(a.get(), c.get()));
    EXPECT_THAT(childrenOf(*to), testing::ElementsAre(b.get(), there.get()));
    c->reparent(to, false);
    EXPECT_THAT(childrenOf(*from), testing::ElementsAre(a.get()));
    EXPECT_THAT(childrenOf(*to), testing::ElementsAre(b.get(), there.get(), c.get()));
    a->reparent(to, false);
    EXPECT_THAT(childrenOf(*from), testing::IsEmpty());
    EXPECT_THAT(childrenOf(*to), testing::ElementsAre(b.get(), there.get(), c.get(), a.get()));
    EXPECT_EQ(b->referenceCount(), 2);
}

TEST(SGNode, MovesWithinItsParent)
{
    auto const parent = make_smart<Group>(nullptr);
    auto const a = make_smart<Group>(parent);
    auto const b = make_smart<Group>(parent);
    b->reparent(parent, true);
    EXPECT_THAT(childrenOf(*parent), testing::ElementsAre(b.get(), a.get()));
    b->reparent(parent, false);
    EXPECT_THAT(childrenOf(*parent), testing::ElementsAre(a.get(), b.get()));
    a->reparent(parent, true);
    EXPECT_THAT(childrenOf(*parent), testing::ElementsAre(a.get(), b.get()));
    EXPECT_EQ(a->referenceCount(), 2);
}

TEST(SGNode, TakesInANodeThatStoodAlone)
{
    auto const parent = make_smart<Group>(nullptr);
    auto child = make_smart<CountedNode>(nullptr);
    child->reparent(parent, false);
    EXPECT_EQ(child->referenceCount(), 2);
    child.reset();
    EXPECT_EQ(CountedNode::alive, 1);
}

TEST(SGNode, RefusesToMoveBelowItselfOrNowhere)
{
    auto const root = make_smart<Group>(nullptr);
    auto const node = make_smart<Group>(root);
    auto const child = make_smart<Group>(node);
    auto const grandchild = make_smart<Group>(child);
    EXPECT_THROW(node->reparent(node, false), std::invalid_argument);
    EXPECT_THROW(node->reparent(child, true), std::invalid_argument);
    EXPECT_THROW(node->reparent(grandchild, false), std::invalid_argument);
    EXPECT_THROW(node->reparent(nullptr, false), std::invalid_argument);
    EXPECT_THAT(childrenOf(*root), testing::ElementsAre(node.get()));
    EXPECT_THAT(childrenOf(*node), testing::ElementsAre(child.get()));
    EXPECT_EQ(node->referenceCount(), 2);
}

TEST(SGNode, GoesWhenItIsTakenOutUnlessSomebodyHoldsIt)
{
    auto const parent = make_smart<Group>(nullptr);
    auto held = make_smart<CountedNode>(parent);
    SGNode* const free = addChild<CountedNode>(parent);
    auto const last = make_smart<Group>(parent);
    free->deparent();
    EXPECT_EQ(CountedNode::alive, 1);
    EXPECT_THAT(childrenOf(*parent), testing::ElementsAre(held.get(), last.get()));
    held->deparent();
    EXPECT_EQ(CountedNode::alive, 1);
    EXPECT_EQ(held->getParent(), nullptr);
    EXPECT_THAT(childrenOf(*parent), testing::ElementsAre(last.get()));
    last->deparent();
    EXPECT_THAT(childrenOf(*parent), testing::IsEmpty());
    held->deparent();
    EXPECT_EQ(held->referenceCount(), 1);
}

TEST(SGNode, DestroysADeepTreeWithBranchesWithoutRecursion)
{
    constexpr int length = 200'000;
    auto root = make_smart<CountedNode>(nullptr);
    smart_ptr<SGNode> last = root;
    for (int i = 0; i < length; ++i) {
        addChild<CountedNode>(last);
        last = make_smart<CountedNode>(last);
        addChild<CountedNode>(last);
    }
    last.reset();
    EXPECT_EQ(CountedNode::alive, 3 * length + 1);
    root.reset();
    EXPECT_EQ(CountedNode::alive, 0);
}

TEST(SGNode, ChangesTheTreeVersionWheneverATreeChanges)
{
    auto const root = make_smart<SGRootNode>();
    std::uint64_t last = SGNode::treeVersion();
    auto const hasChanged = [&] {
        return SGNode::treeVersion() != std::exchange(last, SGNode::treeVersion());
    };
    auto const node = make_smart<SGTransformNode>(root);
    EXPECT_TRUE(hasChanged());
    node->transform = Transform({0.0, 1.0, 0.0}, 1.0);
    EXPECT_FALSE(hasChanged());
    node->reparent(root, true);
    EXPECT_TRUE(hasChanged());
    static_cast<void>(make_smart<SGTransformNode>(node));
    EXPECT_TRUE(hasChanged());
    node->getFirstChild()->deparent();
    EXPECT_TRUE(hasChanged());
    {
        auto const other = make_smart<SGRootNode>();
        static_cast<void>(make_smart<SGTransformNode>(other));
        EXPECT_TRUE(hasChanged());
    }
    EXPECT_TRUE(hasChanged()) << "a child goes with its parent";
}
