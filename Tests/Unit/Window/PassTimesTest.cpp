#include "Viewer/Window/PassTimes.h"

#include <gtest/gtest.h>

namespace sgview {
namespace {

using std::chrono::milliseconds;

using Passes = std::vector<std::pair<char const*, int>>;

void frame(PassTimes& times, Passes const& passes, int whole = 0)
{
    times.beginFrame();
    for (auto const& [name, milli] : passes)
        times.add(name, milliseconds(milli));
    times.endFrame(milliseconds(whole));
}

double sumOf(PassTimes const& times)
{
    double sum = 0.0;
    for (PassTimes::Pass const& pass : times.passes())
        sum += pass.milliseconds;
    return sum;
}

TEST(PassTimes, TakesTheFirstFrameAsItIs)
{
    PassTimes times;
    frame(times, {{"setup", 2}, {"walk", 10}}, 15);
    ASSERT_EQ(times.passes().size(), 2U);
    EXPECT_EQ(times.passes()[0].name, "setup");
    EXPECT_DOUBLE_EQ(times.passes()[0].milliseconds, 2.0);
    EXPECT_DOUBLE_EQ(times.passes()[1].milliseconds, 10.0);
    EXPECT_DOUBLE_EQ(times.frame(), 15.0);
}

TEST(PassTimes, TheFirstFrameDoesNotCountOnceThereIsAnother)
{
    PassTimes times;
    frame(times, {{"walk", 90}}, 200);
    frame(times, {{"walk", 10}}, 12);
    EXPECT_DOUBLE_EQ(times.passes()[0].milliseconds, 10.0);
    EXPECT_DOUBLE_EQ(times.frame(), 12.0);
    frame(times, {{"walk", 20}}, 22); // a window at rest draws few frames: each counts as much
    EXPECT_DOUBLE_EQ(times.passes()[0].milliseconds, 15.0);
    EXPECT_DOUBLE_EQ(times.frame(), 17.0);
    frame(times, {{"walk", 30}}, 32);
    EXPECT_DOUBLE_EQ(times.passes()[0].milliseconds, 20.0);

    times.clear();
    EXPECT_TRUE(times.passes().empty());
    EXPECT_EQ(times.frame(), 0.0);
    frame(times, {{"walk", 90}}, 200);
    frame(times, {{"walk", 10}}, 12);
    EXPECT_DOUBLE_EQ(times.passes()[0].milliseconds, 10.0);
}

TEST(PassTimes, LeansTowardsWhatLasts)
{
    PassTimes times;
    for (int i = 0; i < 100; ++i)
        frame(times, {{"walk", 10}});
    frame(times, {{"walk", 20}});
    EXPECT_NEAR(times.passes()[0].milliseconds, 11.0, 1e-9);
    for (int i = 0; i < 100; ++i)
        frame(times, {{"walk", 20}});
    EXPECT_NEAR(times.passes()[0].milliseconds, 20.0, 0.01);
}

TEST(PassTimes, PassesTakeNoMoreThanTheirFrames)
{
    PassTimes times;
    for (int i = 0; i < 40; ++i) {
        int const slow = i == 0 ? 100 : i * 7 % 30;
        frame(times, {{"setup", slow}, {"walk", 2}}, slow + 3);
        EXPECT_NEAR(sumOf(times) + 1.0, times.frame(), 1e-9) << i;
    }
    frame(times, {{"walk", 2}}, 4); // and so when the passes are others
    EXPECT_DOUBLE_EQ(sumOf(times), 2.0);
    EXPECT_DOUBLE_EQ(times.frame(), 4.0);
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
