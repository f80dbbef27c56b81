#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/SceneGraph/NodeKinds.h"

#include <gmock/gmock.h>

#include <random>

namespace {

/// A visit of a node: entering it or leaving it.
struct Step {
    SGNode* node;
    bool entering;

    bool operator==(Step const&) const = default;
};

class StepRecorder : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGNode* node) override { steps.push_back({node, true}); }
    void leave(SGNode* node) override { steps.push_back({node, false}); }

    std::vector<Step> steps;
};

void walkRecursively(SGNode* node, std::vector<Step>& steps)
{
    steps.push_back({node, true});
    for (SGNode* child = node->getFirstChild(); child; child = child->getNextSibling())
        walkRecursively(child, steps);
    steps.push_back({node, false});
}

void show(SGNode& node, SGNodeVisitor& visitor)
{
    node.acceptEnter(&visitor);
    node.acceptLeave(&visitor);
}

smart_ptr<SGNode> randomTree(unsigned int seed, int nodes)
{
    std::mt19937 random(seed);
    std::vector<NodeKind> const kinds = nodeKinds();
    std::vector<smart_ptr<SGNode>> tree{smart_ptr<SGNode>(new SGRootNode)};
    for (int i = 1; i < nodes; ++i) {
        smart_ptr<SGNode> const node = kinds[random() % kinds.size()].make();
        node->reparent(tree[random() % tree.size()], random() % 2 == 0);
        tree.push_back(node);
    }
    return tree[0];
}

/// Counts nodes and how deep they lie, without keeping a list.
class DepthCounter : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGNode*) override
    {
        ++nodes;
        deepest = std::max(deepest, ++depth);
    }
    void leave(SGNode*) override { --depth; }

    int nodes = 0;
    int depth = 0;
    int deepest = 0;
};

class Deparenter : public SGNodeVisitor {
public:
    using SGNodeVisitor::leave;
    void leave(SGTransformNode* node) override
    {
        ++taken;
        node->deparent();
    }

    int taken = 0;
};

class Adder : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGLightsNode* node) override
    {
        addChild<SGTransformNode>(smart_ptr<SGNode>(node));
        addChild<SGTransformNode>(smart_ptr<SGNode>(node))->reparent(smart_ptr<SGNode>(node), true);
    }
    void enter(SGTransformNode*) override { ++transforms; }

    int transforms = 0;
};

} // namespace

TEST(SGTraverser, WalksRandomTreesAsARecursiveWalkDoes)
{
    for (unsigned int seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        smart_ptr<SGNode> const tree = randomTree(seed, 1 + static_cast<int>(seed % 40));
        auto const recorder = make_smart<StepRecorder>();
        SGTraverser traverser(recorder);
        show(*tree, traverser);
        std::vector<Step> expected;
        walkRecursively(tree.get(), expected);
        EXPECT_EQ(recorder->steps, expected);
    }
}

TEST(SGTraverser, StaysBelowTheNodeItStartsFrom)
{
    auto const root = make_smart<SGRootNode>();
    auto const top = make_smart<SGTransformNode>(root);
    auto const child = make_smart<SGQuadNode>(top);
    auto const sibling = make_smart<SGQuadNode>(root);
    auto const recorder = make_smart<StepRecorder>();
    SGTraverser traverser(recorder);
    show(*top, traverser);
    EXPECT_THAT(recorder->steps, testing::ElementsAre(Step{top.get(), true}, Step{child.get(), true},
                                                      Step{child.get(), false}, Step{top.get(), false}));
}

TEST(SGTraverser, EntersAloneUntilItIsLeft)
{
    auto const root = make_smart<SGRootNode>();
    auto const child = make_smart<SGQuadNode>(root);
    auto const recorder = make_smart<StepRecorder>();
    SGTraverser traverser(recorder);
    root->acceptEnter(&traverser);
    EXPECT_THAT(recorder->steps, testing::ElementsAre(Step{root.get(), true}, Step{child.get(), true},
                                                      Step{child.get(), false}));
    root->acceptLeave(&traverser);
    EXPECT_EQ(recorder->steps.back(), (Step{root.get(), false}));
}

TEST(SGTraverser, GivesEachNodeItsOwnKind)
{
    auto const root = make_smart<SGRootNode>();
    for (NodeKind const& kind : nodeKinds())
        if (kind.name != "SGRootNode")
            kind.make()->reparent(root, false);
    std::vector<std::string> calls;
    SGTraverser traverser(make_smart<KindRecorder>(calls));
    show(*root, traverser);
    std::vector<std::string> expected{"enter SGRootNode"};
    for (NodeKind const& kind : nodeKinds())
        if (kind.name != "SGRootNode")
            expected.insert(expected.end(), {"enter " + kind.name, "leave " + kind.name});
    expected.emplace_back("leave SGRootNode");
    EXPECT_EQ(calls, expected);
}

TEST(SGTraverser, WalksAChainOfAMillionAndDestroysIt)
{
    constexpr int length = 1'000'000;
    auto root = make_smart<SGRootNode>();
    smart_ptr<SGNode> last = root;
    for (int i = 0; i < length; ++i)
        last = make_smart<SGTransformNode>(last);
    weak_ptr<SGNode> const deepest(last);
    last.reset();

    auto const counter = make_smart<DepthCounter>();
    SGTraverser traverser(counter);
    show(*root, traverser);
    EXPECT_EQ(counter->nodes, length + 1);
    EXPECT_EQ(counter->deepest, length + 1);
    EXPECT_EQ(counter->depth, 0);

    root.reset();
    EXPECT_TRUE(deepest.expired());
}

TEST(SGTraverser, WalksAWideTreeAndDestroysIt)
{
    constexpr int width = 300'000;
    auto root = make_smart<SGRootNode>();
    for (int i = 0; i < width; ++i)
        addChild<SGTransformNode>(root);
    auto const counter = make_smart<DepthCounter>();
    SGTraverser traverser(counter);
    show(*root, traverser);
    EXPECT_EQ(counter->nodes, width + 1);
    EXPECT_EQ(counter->deepest, 2);
    root.reset();
}

TEST(SGTraverser, LetsTheVisitorTakeOutTheNodeItLeaves)
{
    auto const root = make_smart<SGRootNode>();
    for (int i = 0; i < 3; ++i) {
        auto const transform = make_smart<SGTransformNode>(root);
        addChild<SGTransformNode>(transform);
        addChild<SGQuadNode>(transform);
    }
    auto const kept = make_smart<SGQuadNode>(root);
    auto const deparenter = make_smart<Deparenter>();
    SGTraverser traverser(deparenter);
    show(*root, traverser);
    EXPECT_EQ(deparenter->taken, 6);
    EXPECT_EQ(root->getFirstChild(), kept.get());
    EXPECT_EQ(kept->getNextSibling(), nullptr);
}

TEST(SGTraverser, VisitsChildrenAddedToTheNodeItEnters)
{
    auto const root = make_smart<SGRootNode>();
    addChild<SGLightsNode>(root);
    auto const adder = make_smart<Adder>();
    SGTraverser traverser(adder);
    show(*root, traverser);
    EXPECT_EQ(adder->transforms, 2);
}

TEST(SGTraverser, KeepsItsVisitorAlive)
{
    auto visitor = make_smart<StepRecorder>();
    SGTraverser const traverser(visitor);
    EXPECT_EQ(visitor->referenceCount(), 2);
    EXPECT_EQ(traverser.getVisitor(), visitor);
}
