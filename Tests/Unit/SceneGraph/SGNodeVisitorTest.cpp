#include "Tests/Unit/SceneGraph/NodeKinds.h"

#include <gmock/gmock.h>

namespace {

using Calls = std::vector<std::string>;

/// Overrides one operation pair; sees what is forwarded to it.
template <typename Kind>
class OneKindRecorder : public SGNodeVisitor {
public:
    explicit OneKindRecorder(Calls& calls_) : calls(calls_) {}

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(Kind*) override { calls.push_back("enter"); }
    void leave(Kind*) override { calls.push_back("leave"); }

private:
    Calls& calls;
};

void show(SGNode& node, SGNodeVisitor& visitor)
{
    node.acceptEnter(&visitor);
    node.acceptLeave(&visitor);
}

template <typename Kind>
std::vector<std::string> kindsSeen()
{
    std::vector<std::string> seen;
    for (NodeKind const& kind : nodeKinds()) {
        Calls calls;
        OneKindRecorder<Kind> visitor(calls);
        show(*kind.make(), visitor);
        if (calls == Calls{"enter", "leave"})
            seen.push_back(kind.name);
        else
            EXPECT_THAT(calls, testing::IsEmpty()) << kind.name;
    }
    return seen;
}

} // namespace

TEST(SGNodeVisitor, GetsTheCallForTheMostDerivedKind)
{
    for (NodeKind const& kind : nodeKinds()) {
        Calls calls;
        KindRecorder visitor(calls);
        show(*kind.make(), visitor);
        EXPECT_THAT(calls, testing::ElementsAre("enter " + kind.name, "leave " + kind.name));
    }
}

TEST(SGNodeVisitor, ForwardsEveryKindToTheGeneralOperation)
{
    std::vector<std::string> all;
    for (NodeKind const& kind : nodeKinds())
        all.push_back(kind.name);
    EXPECT_EQ(kindsSeen<SGNode>(), all);
}

TEST(SGNodeVisitor, ForwardsAllThatIsDrawnToGeometryNode)
{
    EXPECT_THAT(kindsSeen<SGGeometryNode>(),
                testing::ElementsAre("SGGeometryNode", "SGQuadNode", "SGGeometryReferenceNode",
                                     "SGSurfaceGeometryReferenceNode", "SGCurveGeometryReferenceNode"));
}

TEST(SGNodeVisitor, ForwardsSurfacesAndCurvesToGeometryReferenceNode)
{
    EXPECT_THAT(kindsSeen<SGGeometryReferenceNode>(),
                testing::ElementsAre("SGGeometryReferenceNode", "SGSurfaceGeometryReferenceNode",
                                     "SGCurveGeometryReferenceNode"));
}

TEST(SGNodeVisitor, ForwardsNothingToAKindThatNoneDerivesFrom)
{
    EXPECT_THAT(kindsSeen<SGTransformNode>(), testing::ElementsAre("SGTransformNode"));
    EXPECT_THAT(kindsSeen<SGQuadNode>(), testing::ElementsAre("SGQuadNode"));
    EXPECT_THAT(kindsSeen<SGRootNode>(), testing::ElementsAre("SGRootNode"));
}
