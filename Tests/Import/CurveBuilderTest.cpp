#include "Viewer/Import/CurveBuilder.h"

#include <gtest/gtest.h>

#include <limits>

namespace sgview {

namespace {

std::vector<Vector3> const square{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

} // namespace

TEST(CurveBuilder, ChainsSegmentsInAnyOrderAndDirection)
{
    auto const curves = buildCurves(square, {{2, 3}, {0, 1}, {2, 1}});
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_FALSE(curves[0].closed);
    EXPECT_EQ(curves[0].positions.size(), 4U);
    bool const forward = curves[0].positions.front() == square[0];
    EXPECT_EQ(curves[0].positions.front(), square[forward ? 0 : 3]);
    EXPECT_EQ(curves[0].positions.back(), square[forward ? 3 : 0]);
}

TEST(CurveBuilder, RecognisesALoop)
{
    auto const curves = buildCurves(square, {{0, 1}, {1, 2}, {2, 3}, {3, 0}});
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_TRUE(curves[0].closed);
    EXPECT_EQ(curves[0].positions, square);
}

TEST(CurveBuilder, JoinsVerticesAtOnePlace)
{
    std::vector<Vector3> const doubled{square[0], square[1], square[1], square[2]};
    auto const curves = buildCurves(doubled, {{0, 1}, {2, 3}});
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_EQ(curves[0].positions.size(), 3U);
}

TEST(CurveBuilder, EndsLinesWhereThreeMeet)
{
    auto const curves = buildCurves(square, {{0, 1}, {0, 2}, {0, 3}});
    EXPECT_EQ(curves.size(), 3U);
}

TEST(CurveBuilder, LeavesOutBrokenSegments)
{
    std::vector<Vector3> positions = square;
    positions.push_back({std::numeric_limits<double>::quiet_NaN(), 0, 0});
    EXPECT_TRUE(buildCurves(positions, {{0, 0}, {0, 9}, {-1, 1}, {0, 4}}).empty());
}

TEST(CurveBuilder, ASegmentThereAndBackIsNoLoop)
{
    auto const curves = buildCurves(square, {{0, 1}, {1, 0}});
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_FALSE(curves[0].closed);
}

} // namespace sgview
