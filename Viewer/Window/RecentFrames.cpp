#include "Viewer/Window/RecentFrames.h"

#include <algorithm>

namespace sgview {

namespace {

constexpr std::chrono::seconds window{1};

} // namespace

void RecentFrames::add(Time end, std::chrono::duration<double, std::milli> taken)
{
    ring_[next_] = static_cast<float>(taken.count());
    next_ = (next_ + 1) % kept;
    ends_.push_back(end);
    while (ends_.front() <= end - window)
        ends_.pop_front();
}

std::size_t RecentFrames::lastSecond(Time now) const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(ends_, [now](Time end) { return end > now - window; }));
}

std::array<float, RecentFrames::kept> RecentFrames::milliseconds() const
{
    std::array<float, kept> ordered = ring_;
    std::ranges::rotate(ordered, ordered.begin() + static_cast<std::ptrdiff_t>(next_));
    return ordered;
}

float RecentFrames::longest() const
{
    return *std::ranges::max_element(ring_);
}

} // namespace sgview
