#include "SceneGraph/BoneWeightsData.h"

#include <gmock/gmock.h>

#include <array>

TEST(BoneWeightsData, KeepsEachVertexsInfluencesInOrder)
{
    BoneWeightsData weights;
    weights.addVertex(std::array{BoneInfluence{3, 0.25}, BoneInfluence{1, 0.75}});
    weights.addVertex({});
    weights.addVertex(std::array{BoneInfluence{7, 1.0}});
    EXPECT_EQ(weights.size(), 3U);
    EXPECT_THAT(weights.influences(0), testing::ElementsAre(BoneInfluence{3, 0.25}, BoneInfluence{1, 0.75}));
    EXPECT_THAT(weights.influences(1), testing::IsEmpty());
    EXPECT_THAT(weights.influences(2), testing::ElementsAre(BoneInfluence{7, 1.0}));
}

TEST(BoneWeightsData, OfNoVertexIsEmpty)
{
    EXPECT_EQ(BoneWeightsData().size(), 0U);
}
