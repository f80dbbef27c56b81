#include "Viewer/Import/SkinWeights.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace sgview {

TEST(SkinWeights, KeepsTheFourStrongestAndCountsTheRest)
{
    SkinWeights weights(1);
    for (Index bone = 0; bone < 6; ++bone)
        weights.add(0, bone, 1.0 + bone);
    ModelSurface surface;
    weights.store(surface, none);

    ASSERT_EQ(surface.influences.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(surface.influences[i].bone, static_cast<Index>(5 - i));
        EXPECT_DOUBLE_EQ(surface.influences[i].weight, (6.0 - static_cast<double>(i)) / 18.0);
    }
    EXPECT_EQ(surface.mostInfluencesInFile, 6);
    EXPECT_EQ(surface.droppedInfluences, 2);
}

TEST(SkinWeights, NormalisesAnyScale)
{
    for (double const scale : {1e-300, 1e-3, 1.0, 255.0, 1e300}) {
        SkinWeights weights(1);
        weights.add(0, 0, 3.0 * scale);
        weights.add(0, 1, 1.0 * scale);
        ModelSurface surface;
        weights.store(surface, none);
        ASSERT_EQ(surface.influences.size(), 2U) << scale;
        EXPECT_DOUBLE_EQ(surface.influences[0].weight, 0.75) << scale;
        EXPECT_DOUBLE_EQ(surface.influences[1].weight, 0.25) << scale;
    }
}

TEST(SkinWeights, LeavesOutWhatIsNoWeight)
{
    SkinWeights weights(1);
    weights.add(0, 0, 0.0);
    weights.add(0, 1, -1.0);
    weights.add(0, 2, std::nan(""));
    weights.add(0, 3, std::numeric_limits<double>::infinity());
    EXPECT_TRUE(weights.hasUnbound());
    ModelSurface surface;
    weights.store(surface, 7);
    ASSERT_EQ(surface.influences.size(), 1U);
    EXPECT_EQ(surface.influences[0].bone, 7);
    EXPECT_EQ(surface.influences[0].weight, 1.0);
    EXPECT_EQ(surface.mostInfluencesInFile, 0);
}

TEST(SkinWeights, AddsUpTwoOfOneBone)
{
    SkinWeights weights(2);
    weights.add(1, 4, 0.25);
    weights.add(1, 4, 0.5);
    weights.add(1, 5, 0.25);
    ModelSurface surface;
    weights.store(surface, 0);
    EXPECT_EQ(surface.influenceOffsets, (std::vector<std::int32_t>{0, 1, 3}));
    EXPECT_DOUBLE_EQ(surface.influences[1].weight, 0.75);
}

} // namespace sgview
