#include "Viewer/Output/FrameSchedule.h"

#include <algorithm>
#include <cmath>

namespace sgview {

namespace {

FrameRange usualRange(FilmOptions const& options, double rate, double length)
{
    if (options.turntable)
        return {0, *options.turntable - 1};
    if (!options.isFilm())
        return {};
    double const frames = std::clamp(std::round(length * rate), 1.0, FrameRange::largest + 1.0);
    return {0, static_cast<std::uint32_t>(frames) - 1};
}

} // namespace

FrameSchedule::FrameSchedule(FilmOptions const& options, double start, double length)
    : options_(options),
      start_(start),
      length_(length),
      range_(options.frames ? *options.frames : usualRange(options, rate(), length))
{
}

FrameSchedule::Moment FrameSchedule::at(std::uint32_t frame) const
{
    if (!options_.isFilm())
        return {start_, 0.0};
    Moment moment;
    if (length_ > 0.0)
        moment.seconds = std::fmod(start_ + frame / rate(), length_);
    if (options_.turntable)
        moment.turn = 360.0 * (frame % *options_.turntable) / *options_.turntable;
    return moment;
}

} // namespace sgview
