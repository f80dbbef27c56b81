#include "Viewer/Window/Playback.h"

#include <gtest/gtest.h>

namespace sgview {
namespace {

using std::chrono::milliseconds;

class PlaybackTest : public testing::Test {
protected:
    PlaybackTest() { playback.load(0, 2.0); }

    void pass(int milli)
    {
        now += milliseconds(milli);
        playback.advance(now);
    }

    Playback playback;
    Playback::Time now{std::chrono::hours(1)};
};

TEST_F(PlaybackTest, StandsUntilItIsPlayed)
{
    pass(500);
    EXPECT_EQ(playback.position(), 0.0);
    playback.play(now);
    pass(500);
    EXPECT_DOUBLE_EQ(playback.position(), 0.5);
    playback.pause();
    pass(500);
    EXPECT_DOUBLE_EQ(playback.position(), 0.5);
}

TEST_F(PlaybackTest, TimeThatPassedWhileItStoodDoesNotCount)
{
    playback.playOrPause(now);
    pass(300);
    playback.playOrPause(now);
    now += milliseconds(10'000);
    playback.playOrPause(now);
    pass(300);
    EXPECT_DOUBLE_EQ(playback.position(), 0.6);
}

TEST_F(PlaybackTest, LoopsAround)
{
    playback.play(now);
    pass(4'500);
    EXPECT_DOUBLE_EQ(playback.position(), 0.5);
    EXPECT_TRUE(playback.isPlaying());
}

TEST_F(PlaybackTest, StopsAtTheEndWhereItDoesNotLoopAndBeginsAgain)
{
    playback.setLooping(false);
    playback.play(now);
    pass(4'500);
    EXPECT_DOUBLE_EQ(playback.position(), 2.0);
    EXPECT_FALSE(playback.isPlaying());
    playback.play(now);
    pass(250);
    EXPECT_DOUBLE_EQ(playback.position(), 0.25);
}

TEST_F(PlaybackTest, SpeedCountsFromNowOnAndHasLimits)
{
    playback.play(now);
    pass(500);
    playback.setSpeed(2.0);
    pass(250);
    EXPECT_DOUBLE_EQ(playback.position(), 1.0);
    playback.setSpeed(1e9);
    EXPECT_EQ(playback.speed(), Playback::fastest);
    playback.setSpeed(0.0);
    EXPECT_EQ(playback.speed(), Playback::slowest);
}

TEST_F(PlaybackTest, StepsBothWaysAndStands)
{
    playback.play(now);
    pass(1'000);
    playback.step(3);
    EXPECT_FALSE(playback.isPlaying());
    EXPECT_DOUBLE_EQ(playback.position(), 1.1);
    playback.step(-3);
    EXPECT_DOUBLE_EQ(playback.position(), 1.0);
    playback.scrub(0.0);
    playback.step(-3);
    EXPECT_DOUBLE_EQ(playback.position(), 1.9); // around the start
    playback.setLooping(false);
    playback.scrub(0.0);
    playback.step(-3);
    EXPECT_EQ(playback.position(), 0.0);
}

TEST_F(PlaybackTest, ScrubbingStaysWithinTheAnimationAndPlaysOn)
{
    playback.play(now);
    playback.scrub(1.5);
    pass(100);
    EXPECT_DOUBLE_EQ(playback.position(), 1.6);
    playback.scrub(99.0);
    EXPECT_EQ(playback.position(), 2.0);
    playback.scrub(-1.0);
    EXPECT_EQ(playback.position(), 0.0);
}

TEST_F(PlaybackTest, WhatHasNoLengthDoesNotPlay)
{
    playback.load(0, 0.0);
    playback.play(now);
    EXPECT_FALSE(playback.isPlaying());
    playback.step(1);
    EXPECT_EQ(playback.position(), 0.0);
    playback.load(none, 5.0);
    EXPECT_EQ(playback.length(), 0.0);
}

TEST_F(PlaybackTest, LoadingRewindsAndKeepsSpeedAndLoop)
{
    playback.setSpeed(0.5);
    playback.setLooping(false);
    playback.play(now);
    pass(1'000);
    playback.load(1, 3.0);
    EXPECT_EQ(playback.animation(), 1);
    EXPECT_EQ(playback.position(), 0.0);
    EXPECT_FALSE(playback.isPlaying());
    EXPECT_EQ(playback.speed(), 0.5);
    EXPECT_FALSE(playback.isLooping());
}

} // namespace
} // namespace sgview
