#include "Viewer/Window/RecentFrames.h"

#include <gtest/gtest.h>

namespace sgview {
namespace {

using std::chrono::milliseconds;

TEST(RecentFrames, CountsTheLastSecond)
{
    RecentFrames times;
    RecentFrames::Time now{std::chrono::hours(1)};
    EXPECT_EQ(times.lastSecond(now), 0U);
    for (int i = 0; i < 50; ++i)
        times.add(now += milliseconds(100), milliseconds(3));
    EXPECT_EQ(times.lastSecond(now), 10U);
    EXPECT_EQ(times.lastSecond(now + milliseconds(450)), 6U);
    EXPECT_EQ(times.lastSecond(now + milliseconds(2000)), 0U);
}

TEST(RecentFrames, KeepsTheNewestInOrder)
{
    RecentFrames times;
    RecentFrames::Time const now{std::chrono::hours(1)};
    EXPECT_EQ(times.longest(), 0.0F);
    constexpr int count = 130;
    for (int i = 1; i <= count; ++i)
        times.add(now, milliseconds(i));
    EXPECT_EQ(times.longest(), 130.0F);
    auto const all = times.milliseconds();
    EXPECT_EQ(all.front(), 11.0F);
    EXPECT_EQ(all.back(), 130.0F);
    for (std::size_t i = 1; i < all.size(); ++i)
        EXPECT_EQ(all[i], all[i - 1] + 1.0F);
}

} // namespace
} // namespace sgview
