#include "Benchmarks/Kernels/Kernels.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"

#include <memory>
#include <vector>

// A pass that does nothing, shown 100,000 nodes: a root, and transforms below it with nine children each.

namespace {

constexpr std::size_t transforms = 10'000;
constexpr std::size_t childrenEach = 9;
constexpr std::size_t nodeCount = transforms * (1 + childrenEach);

smart_ptr<SGRootNode> makeTree()
{
    auto const root = make_smart<SGRootNode>();
    for (std::size_t i = 0; i < transforms; ++i) {
        auto const transform = make_smart<SGTransformNode>(root);
        for (std::size_t k = 0; k < childrenEach; ++k)
            static_cast<void>(make_smart<SGTransformNode>(transform));
    }
    return root;
}

class EmptyPass : public SGNodeVisitor {};

class CountingPass : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGTransformNode*) override { ++entered; }
    void leave(SGTransformNode*) override { ++left; }

    std::size_t entered = 0;
    std::size_t left = 0;
};

void emptyPass(benchmark::State& state)
{
    auto const root = makeTree();
    SGTraverser traverser(make_smart<EmptyPass>());
    for (auto _ : state) {
        root->acceptEnter(&traverser);
        root->acceptLeave(&traverser);
    }
    auto const counting = make_smart<CountingPass>();
    SGTraverser counter(counting);
    root->acceptEnter(&counter);
    root->acceptLeave(&counter);
    require(state, counting->entered == nodeCount && counting->left == nodeCount);
    countItems(state, nodeCount);
}
BENCHMARK(emptyPass)->Unit(benchmark::kMicrosecond);

struct PlainNode {
    virtual ~PlainNode() = default;
    virtual void visit(std::size_t& visited) { ++visited; }
    std::vector<std::unique_ptr<PlainNode>> children;
};

void walk(PlainNode& node, std::size_t& visited)
{
    node.visit(visited);
    for (auto const& child : node.children)
        walk(*child, visited);
}

/// One virtual call a node, by recursion.
void plainWalk(benchmark::State& state)
{
    PlainNode root;
    for (std::size_t i = 0; i < transforms; ++i) {
        root.children.push_back(std::make_unique<PlainNode>());
        for (std::size_t k = 0; k < childrenEach; ++k)
            root.children.back()->children.push_back(std::make_unique<PlainNode>());
    }
    std::size_t visited = 0;
    for (auto _ : state) {
        visited = 0;
        walk(root, visited);
        benchmark::DoNotOptimize(visited);
    }
    require(state, visited == nodeCount + 1);
    countItems(state, nodeCount);
}
BENCHMARK(plainWalk)->Unit(benchmark::kMicrosecond);

} // namespace
