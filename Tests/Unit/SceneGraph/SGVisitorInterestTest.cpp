#include "SceneGraph/SGVisitorInterest.h"

#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/SceneGraph/NodeKinds.h"

#include <gmock/gmock.h>

namespace {

using Nodes = std::vector<SGNode*>;

/// Overrides one operation pair, and may say so.
template <typename Kind>
class OneKind : public SGNodeVisitor {
public:
    explicit OneKind(bool says_) : says(says_) {}

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(Kind* node) override { seen.push_back(node); }
    void leave(Kind* node) override { seen.push_back(node); }
    [[nodiscard]] SGVisitorInterest interest() const override
    {
        return says ? VisitorInterest::of(*this) : SGNodeVisitor::interest();
    }

    Nodes seen;

private:
    bool says;
};

/// Overrides more than the class that says what it overrides.
class Further : public OneKind<SGLightsNode> {
public:
    Further() : OneKind(true) {}

    using OneKind::enter;
    void enter(SGTransformNode* node) override { seen.push_back(node); }
};

class EnteringOnly : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGGeometryNode*) override {}
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }
};

/// A node of a host's own.
class HostNode : public SGNode {
public:
    using SGNode::SGNode;
    void acceptEnter(SGNodeVisitor* visitor) override { visitor->enter(this); }
    void acceptLeave(SGNodeVisitor* visitor) override { visitor->leave(this); }
};

/// A node of each kind below a root.
smart_ptr<SGNode> oneOfEach()
{
    smart_ptr<SGNode> root(new SGRootNode);
    for (NodeKind const& kind : nodeKinds())
        kind.make()->reparent(root, false);
    make_smart<HostNode>(nullptr)->reparent(root, false);
    return root;
}

template <typename Kind>
Nodes seenBy(SGNode& tree, bool says)
{
    OneKind<Kind> visitor(says);
    SGTraverser::walk(tree, visitor);
    return visitor.seen;
}

template <typename Kind>
void expectSameWalk()
{
    smart_ptr<SGNode> const tree = oneOfEach();
    EXPECT_EQ(seenBy<Kind>(*tree, true), seenBy<Kind>(*tree, false));
    EXPECT_THAT(seenBy<Kind>(*tree, true), testing::Not(testing::IsEmpty()));
}

template <typename... Kinds>
void expectSameWalks()
{
    (expectSameWalk<Kinds>(), ...);
}

} // namespace

TEST(SGVisitorInterest, LeavesOutNothingThatWouldBeSeen)
{
    expectSameWalks<SGNode, SGRootNode, SGOrderedGroupNode, SGCameraNode, SGLightsNode, SGTransformNode,
                    SGZTransformNode, SGGeometryNode, SGQuadNode, SGGeometryReferenceNode,
                    SGSurfaceGeometryReferenceNode, SGCurveGeometryReferenceNode>();
}

TEST(SGVisitorInterest, IsInWhatIsOverridden)
{
    SGVisitorInterest const lights = OneKind<SGLightsNode>(true).interest();
    EXPECT_TRUE(lights.enters(SGNodeKind::lights) && lights.leaves(SGNodeKind::lights));
    EXPECT_FALSE(lights.enters(SGNodeKind::transform) || lights.leaves(SGNodeKind::other));
    SGVisitorInterest const entering = EnteringOnly().interest();
    for (SGNodeKind const kind : {SGNodeKind::geometry, SGNodeKind::quad, SGNodeKind::geometryReference,
                                  SGNodeKind::surface, SGNodeKind::curve}) {
        EXPECT_TRUE(entering.enters(kind));
        EXPECT_FALSE(entering.leaves(kind));
    }
    EXPECT_FALSE(entering.enters(SGNodeKind::root));
}

TEST(SGVisitorInterest, IsInEverythingForAClassThatDoesNotSayAndForOneDerivedFromOneThatDoes)
{
    EXPECT_EQ(OneKind<SGLightsNode>(false).interest(), SGVisitorInterest::everything());
    EXPECT_EQ(Further().interest(), SGVisitorInterest::everything());
    smart_ptr<SGNode> const tree = oneOfEach();
    Further visitor;
    SGTraverser::walk(*tree, visitor);
    EXPECT_EQ(visitor.seen.size(), 3U);
}

TEST(SGVisitorInterest, KnowsEveryKindByItsNode)
{
    std::vector<SGNodeKind> kinds;
    smart_ptr<SGNode> const tree = oneOfEach();
    for (SGNode const* node = tree->getFirstChild(); node; node = node->getNextSibling())
        kinds.push_back(node->kind());
    EXPECT_THAT(kinds,
                testing::ElementsAre(SGNodeKind::root, SGNodeKind::orderedGroup, SGNodeKind::camera,
                                     SGNodeKind::lights, SGNodeKind::transform, SGNodeKind::zTransform,
                                     SGNodeKind::geometry, SGNodeKind::quad, SGNodeKind::geometryReference,
                                     SGNodeKind::surface, SGNodeKind::curve, SGNodeKind::other));
}
