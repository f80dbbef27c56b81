#include "Viewer/Window/Playback.h"

#include <algorithm>
#include <cmath>

namespace sgview {

void Playback::load(Index animation, double length)
{
    animation_ = animation;
    length_ = animation == none ? 0.0 : length;
    position_ = 0.0;
    playing_ = false;
}

void Playback::play(Time now)
{
    if (!(length_ > 0.0))
        return;
    if (!looping_ && position_ >= length_)
        position_ = 0.0;
    playing_ = true;
    last_ = now;
}

void Playback::playOrPause(Time now)
{
    if (playing_)
        pause();
    else
        play(now);
}

void Playback::advance(Time now)
{
    if (!playing_)
        return;
    double const moved = position_ + speed_ * std::chrono::duration<double>(now - last_).count();
    last_ = now;
    position_ = within(moved);
    if (!looping_ && moved >= length_)
        pause();
}

void Playback::step(int frames)
{
    pause();
    position_ = within(position_ + frames / framesPerSecond);
}

void Playback::scrub(double seconds)
{
    position_ = std::clamp(seconds, 0.0, length_);
}

void Playback::setSpeed(double speed)
{
    speed_ = std::clamp(speed, slowest, fastest);
}

double Playback::within(double seconds) const
{
    if (!looping_ || !(length_ > 0.0))
        return std::clamp(seconds, 0.0, length_);
    double const rest = std::fmod(seconds, length_);
    return rest < 0.0 ? rest + length_ : rest;
}

} // namespace sgview
