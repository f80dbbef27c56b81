#include "Viewer/CommandLine/Progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <string>
#include <thread>

#include <poll.h>
#include <pty.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using sgview::Progress;
using testing::EndsWith;
using testing::HasSubstr;

/// A terminal that nobody sits at.
class ProgressTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (::openpty(&reader_, &terminal, nullptr, nullptr, nullptr) != 0)
            GTEST_SKIP() << "the system gives no pseudo-terminal";
    }
    ~ProgressTest() override
    {
        if (terminal < 0)
            return;
        ::close(terminal);
        ::close(reader_);
    }

    /// What the terminal has shown, once nothing more comes.
    [[nodiscard]] std::string shown() const
    {
        constexpr int patience = 300; // milliseconds
        std::string text;
        std::array<char, 4096> piece{};
        pollfd watched{reader_, POLLIN, 0};
        while (::poll(&watched, 1, patience) > 0)
            text.append(piece.data(), static_cast<std::size_t>(::read(reader_, piece.data(), piece.size())));
        return text;
    }

    int terminal = -1;

private:
    int reader_ = -1;
};

TEST_F(ProgressTest, LongWorkIsShownAndErased)
{
    {
        Progress const progress("loading duck.dae", terminal, 10ms);
        std::this_thread::sleep_for(200ms);
    }
    std::string const text = shown();
    EXPECT_THAT(text, HasSubstr("\r\033[Ksgview: loading duck.dae, 0 s"));
    EXPECT_THAT(text, EndsWith("\r\033[K"));
}

TEST_F(ProgressTest, ShortWorkIsNotMentioned)
{
    {
        Progress const progress("loading duck.dae", terminal, 10s);
    }
    EXPECT_EQ(shown(), "");
}

TEST_F(ProgressTest, FileIsNoTerminal)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    {
        Progress const progress("loading duck.dae", ends[1], 1ms);
        std::this_thread::sleep_for(50ms);
    }
    ::close(ends[1]);
    char byte = 0;
    EXPECT_EQ(::read(ends[0], &byte, 1), 0);
    ::close(ends[0]);
}

} // namespace
