#include "SceneGraph/SGCombinationVisitor.h"
#include "Tests/Unit/SceneGraph/NodeKinds.h"

#include <gmock/gmock.h>

TEST(SGCombinationVisitor, CallsEachVisitorOnceForTheNodesKindInListOrderBothWays)
{
    for (NodeKind const& kind : nodeKinds()) {
        std::vector<std::string> calls;
        std::vector<smart_ptr<SGNodeVisitor>> const held{make_smart<KindRecorder>(calls, "first "),
                                                         make_smart<KindRecorder>(calls, "second "),
                                                         make_smart<KindRecorder>(calls, "third ")};
        SGCombinationVisitor combination(held);
        smart_ptr<SGNode> const node = kind.make();
        node->acceptEnter(&combination);
        node->acceptLeave(&combination);
        EXPECT_THAT(calls, testing::ElementsAre("first enter " + kind.name, "second enter " + kind.name,
                                                "third enter " + kind.name, "first leave " + kind.name,
                                                "second leave " + kind.name, "third leave " + kind.name));
    }
}

TEST(SGCombinationVisitor, OfNothingDoesNothing)
{
    SGCombinationVisitor combination{{}};
    SGRootNode root;
    combination.enter(&root);
    combination.leave(&root);
    EXPECT_TRUE(combination.getVisitors().empty());
}

TEST(SGCombinationVisitor, KeepsItsVisitorsAlive)
{
    std::vector<std::string> calls;
    auto visitor = make_smart<KindRecorder>(calls);
    SGCombinationVisitor const combination({visitor});
    EXPECT_EQ(visitor->referenceCount(), 2);
    EXPECT_EQ(combination.getVisitors().at(0), visitor);
}
