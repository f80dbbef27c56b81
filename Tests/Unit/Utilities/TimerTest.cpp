#include "Utilities/Timer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <type_traits>

namespace {

using Clock = RogueSingleton<Timer, TimerFactory>;

class TickingTimer : public Timer {
public:
    Timestamp now() override { return {++ticks_}; }

private:
    std::int64_t ticks_ = 0;
};

} // namespace

static_assert(Timestamp{5}.diffInMicrosec(Timestamp{2}) == 3);
static_assert(Timestamp{2}.diffInMicrosec(Timestamp{5}) == -3);
static_assert(Timestamp{2} < Timestamp{5});
static_assert(!std::is_convertible_v<Timestamp, std::int64_t>, "only differences are numbers");

TEST(Timer, NeverGoesBack)
{
    Timestamp last = Clock::getInstance().now();
    for (int i = 0; i < 10000; ++i) {
        Timestamp const next = Clock::getInstance().now();
        ASSERT_GE(next, last);
        last = next;
    }
}

TEST(Timer, CountsMicroseconds)
{
    using namespace std::chrono;
    auto const outer = steady_clock::now();
    Timestamp const start = Clock::getInstance().now();
    std::this_thread::sleep_for(milliseconds(20));
    auto const elapsed = Clock::getInstance().now().diffInMicrosec(start);
    auto const bound = duration_cast<microseconds>(steady_clock::now() - outer).count();
    EXPECT_GE(elapsed, 19999);
    EXPECT_LE(elapsed, bound + 1);
}

TEST(Timer, CanBeReplaced)
{
    TimerFactory::setMaker([] { return make_smart<TickingTimer>(); });
    Clock::reset();
    EXPECT_EQ(Clock::getInstance().now(), Timestamp{1});
    EXPECT_EQ(Clock::getInstance().now(), Timestamp{2});

    TimerFactory::setMaker({});
    EXPECT_EQ(Clock::getInstance().now(), Timestamp{3}) << "takes effect with the next instance";
    Clock::reset();
    EXPECT_FALSE(dynamic_cast<TickingTimer*>(&Clock::getInstance()));
}
