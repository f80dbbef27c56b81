#include "Viewer/Window/Notices.h"

#include <gtest/gtest.h>

namespace sgview {
namespace {

using Clock = std::chrono::steady_clock;

TEST(Notices, SuccessesGoBeforeFailures)
{
    Notices notices;
    notices.tell("kept");
    notices.warn("broken");
    EXPECT_FALSE(notices.expire(Clock::now()));
    EXPECT_TRUE(notices.expire(Clock::now() + std::chrono::seconds(6)));
    ASSERT_EQ(notices.all().size(), 1U);
    EXPECT_TRUE(notices.all()[0].isError);
    EXPECT_TRUE(notices.expire(Clock::now() + std::chrono::seconds(60)));
    EXPECT_TRUE(notices.all().empty());
}

TEST(Notices, TheSameIsSaidOnceAndTheOldestMakesRoom)
{
    Notices notices;
    for (int i = 0; i < 3; ++i)
        notices.warn("the same");
    EXPECT_EQ(notices.all().size(), 1U);
    for (char const* text : {"a", "b", "c", "d"})
        notices.tell(text);
    ASSERT_EQ(notices.all().size(), 4U);
    EXPECT_EQ(notices.all().front().text, "a");
    EXPECT_EQ(notices.all().back().text, "d");
}

} // namespace
} // namespace sgview
