#include "Viewer/Import/Tracks.h"

#include <gtest/gtest.h>

#include <limits>

namespace sgview {

TEST(Tracks, AreSortedAndTheLastKeyOfATimeCounts)
{
    ModelTrack<Vector3> track{
        Interpolation::linear, {2.0, 0.0, 2.0, 1.0}, {{2, 0, 0}, {0, 0, 0}, {3, 0, 0}, {1, 0, 0}}};
    ASSERT_TRUE(tidyTrack(track));
    EXPECT_EQ(track.times, (std::vector<double>{0.0, 1.0, 2.0}));
    EXPECT_EQ(track.values, (std::vector<Vector3>{{0, 0, 0}, {1, 0, 0}, {3, 0, 0}}));
}

TEST(Tracks, MoveTangentsWithTheirKeys)
{
    ModelTrack<Vector3> track{
        Interpolation::cubic, {1.0, 0.0}, {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}, {5, 0, 0}, {6, 0, 0}}};
    ASSERT_TRUE(tidyTrack(track));
    EXPECT_EQ(track.values.front(), Vector3(4, 0, 0));
    EXPECT_EQ(track.values.back(), Vector3(3, 0, 0));
}

TEST(Tracks, ThatAreBrokenBecomeEmpty)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    ModelTrack<Vector3> const broken[] = {{Interpolation::linear, {}, {}},
                                          {Interpolation::linear, {nan}, {{0, 0, 0}}},
                                          {Interpolation::linear, {-1.0}, {{0, 0, 0}}},
                                          {Interpolation::linear, {0.0}, {{nan, 0, 0}}},
                                          {Interpolation::cubic, {0.0}, {{nan, 0, 0}, {0, 0, 0}, {0, 0, 0}}},
                                          {Interpolation::cubic, {0.0}, {{0, 0, 0}, {0, 0, 0}}}};
    for (ModelTrack<Vector3> track : broken) {
        EXPECT_FALSE(tidyTrack(track));
        EXPECT_TRUE(track.times.empty());
        EXPECT_TRUE(track.values.empty());
    }
}

TEST(Tracks, WithARotationOfNoDirectionAreBroken)
{
    ModelTrack<Quaternion> track{Interpolation::linear, {0.0}, {{0, 0, 0, 0}}};
    EXPECT_FALSE(tidyTrack(track));
    ModelTrack<Quaternion> spline{Interpolation::cubic, {0.0}, {{0, 0, 0, 0}, {0, 0, 0, 1}, {0, 0, 0, 0}}};
    EXPECT_TRUE(tidyTrack(spline));
}

} // namespace sgview
