#pragma once

#include "Viewer/Import/Model.h"

#include <chrono>

namespace sgview {

/// Which moment of which animation is shown, and how it moves on. The clock is the caller's: every operation
/// that depends on it is told the time.
class Playback {
public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr double framesPerSecond = 30.0; ///< of a step
    static constexpr double slowest = 1.0 / 16.0;
    static constexpr double fastest = 16.0;

    /// At the start of an animation, standing; with `none`, in the rest pose.
    /// \param length  seconds
    void load(Index animation, double length);

    [[nodiscard]] Index animation() const { return animation_; }
    [[nodiscard]] double length() const { return length_; }
    [[nodiscard]] double position() const { return position_; } ///< seconds, 0 to `length`
    [[nodiscard]] double speed() const { return speed_; }
    [[nodiscard]] bool isPlaying() const { return playing_; }
    [[nodiscard]] bool isLooping() const { return looping_; }

    /// From the end of an animation that does not loop, plays from its start. An animation without length
    /// does not play.
    void play(Time now);
    void pause() { playing_ = false; }
    void playOrPause(Time now);

    /// Moves on to `now`, if it plays.
    void advance(Time now);

    /// Stands, so many frames further on or, below 0, back.
    void step(int frames);

    /// Goes to a moment, in seconds; plays on from there if it plays.
    void scrub(double seconds);

    /// Times real time, kept within `slowest` and `fastest`.
    void setSpeed(double speed);
    void setLooping(bool looping) { looping_ = looping; }

private:
    /// A moment in the animation's length: around where it loops, else the nearest.
    [[nodiscard]] double within(double seconds) const;

    Index animation_ = none;
    double length_ = 0.0;
    double position_ = 0.0;
    double speed_ = 1.0;
    bool playing_ = false;
    bool looping_ = true;
    Time last_; ///< when `position_` was right, while it plays
};

} // namespace sgview
