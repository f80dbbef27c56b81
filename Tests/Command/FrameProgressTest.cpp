#include "Viewer/CommandLine/FrameProgress.h"

#include <gmock/gmock.h>

#include <array>
#include <thread>

#include <poll.h>
#include <pty.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using sgview::FrameProgress;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// What one end of a pipe or terminal has been told, once nothing more comes.
std::string readAll(int end)
{
    constexpr int patience = 200; // milliseconds
    std::string text;
    std::array<char, 4096> piece{};
    pollfd watched{end, POLLIN, 0};
    while (::poll(&watched, 1, patience) > 0 && (watched.revents & POLLIN) != 0) {
        ssize_t const length = ::read(end, piece.data(), piece.size());
        text.append(piece.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    }
    return text;
}

void work(int stream, FrameProgress::Pace const& pace)
{
    FrameProgress progress("walker.glb", 4, stream, pace);
    for (int i = 0; i < 4; ++i) {
        std::this_thread::sleep_for(15ms);
        progress.advance();
    }
}

TEST(FrameProgress, BarAndTimeLeft)
{
    EXPECT_EQ(sgview::progressBar(5, 10, 60s), "[##########..........] 5 of 10, 1 min 0 s left");
    EXPECT_EQ(sgview::progressBar(10, 10, 60s), "[####################] 10 of 10, 0 s left");
    EXPECT_EQ(sgview::progressBar(1, 240, 100ms), "[....................] 1 of 240, 24 s left");
    EXPECT_EQ(sgview::progressLine(3, 240, 90s), "frame 3 of 240, 1 h 58 min left");
}

TEST(FrameProgress, BarOnATerminalThatGoesAwayAgain)
{
    int reader = -1;
    int terminal = -1;
    if (::openpty(&reader, &terminal, nullptr, nullptr, nullptr) != 0)
        GTEST_SKIP() << "the system gives no pseudo-terminal";
    work(terminal, {1ms, 10s});
    std::string const text = readAll(reader);
    ::close(terminal);
    ::close(reader);
    EXPECT_THAT(text, StartsWith("\r\033[Ksgview: walker.glb [#####...............] 1 of 4, 1 s left"));
    EXPECT_THAT(text, HasSubstr("\r\033[Ksgview: walker.glb [####################] 4 of 4, 0 s left"));
    EXPECT_THAT(text, EndsWith("left\r\033[K"));
}

TEST(FrameProgress, PlainLinesElsewhere)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    work(ends[1], {10s, 1ms});
    EXPECT_THAT(readAll(ends[0]), StartsWith("sgview: walker.glb: frame 1 of 4, 1 s left\n"
                                             "sgview: walker.glb: frame 2 of 4, 1 s left\n"));
    work(ends[1], {1ms, 10s});
    EXPECT_EQ(readAll(ends[0]), "") << "short work";
    for (int const end : ends)
        ::close(end);
}

} // namespace
