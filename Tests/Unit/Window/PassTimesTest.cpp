#include "Viewer/Window/PassTimes.h"

#include <gtest/gtest.h>

namespace sgview {
namespace {

using std::chrono::milliseconds;

void frame(PassTimes& times, std::vector<std::pair<char const*, int>> const& passes)
{
    times.beginFrame();
    for (auto const& [name, milli] : passes)
        times.add(name, milliseconds(milli));
    times.endFrame();
}

TEST(PassTimes, TakesTheFirstFrameAsItIs)
{
    PassTimes times;
    frame(times, {{"setup", 2}, {"walk", 10}});
    ASSERT_EQ(times.passes().size(), 2U);
    EXPECT_EQ(times.passes()[0].name, "setup");
    EXPECT_DOUBLE_EQ(times.passes()[0].milliseconds, 2.0);
    EXPECT_DOUBLE_EQ(times.passes()[1].milliseconds, 10.0);
}

TEST(PassTimes, LeansTowardsWhatLasts)
{
    PassTimes times;
    frame(times, {{"walk", 10}});
    frame(times, {{"walk", 20}});
    EXPECT_DOUBLE_EQ(times.passes()[0].milliseconds, 11.0);
    for (int i = 0; i < 100; ++i)
        frame(times, {{"walk", 20}});
    EXPECT_NEAR(times.passes()[0].milliseconds, 20.0, 0.01);
}

TEST(PassTimes, AnotherStrategyBeginsAnew)
{
    PassTimes times;
    frame(times, {{"animate", 4}, {"setup", 2}, {"walk", 10}});
    frame(times, {{"setup", 6}, {"walk", 10}});
    ASSERT_EQ(times.passes().size(), 2U);
    EXPECT_EQ(times.passes()[0].name, "setup");
    EXPECT_DOUBLE_EQ(times.passes()[0].milliseconds, 6.0);
}

} // namespace
} // namespace sgview
