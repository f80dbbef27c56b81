#include "Viewer/Window/PassTimes.h"

#include <algorithm>

namespace sgview {

namespace {

double inMilliseconds(std::chrono::nanoseconds time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// The plain mean of the first frames, of which few are drawn while nothing moves; then one that follows. The
/// very first makes what all others use again, and does not count as soon as there is another.
double weightOfNew(std::size_t framesBefore)
{
    constexpr double least = 0.1;
    return std::max(least, 1.0 / static_cast<double>(std::max<std::size_t>(framesBefore, 1)));
}

void follow(double& mean, double latest, double weight)
{
    mean += weight * (latest - mean);
}

} // namespace

void PassTimes::add(std::string_view name, std::chrono::nanoseconds time)
{
    latest_.push_back({std::string(name), inMilliseconds(time)});
}

bool PassTimes::isOfSamePasses() const
{
    return std::ranges::equal(latest_, passes_, {}, &Pass::name, &Pass::name);
}

void PassTimes::endFrame(std::chrono::nanoseconds whole)
{
    if (!isOfSamePasses()) {
        passes_ = latest_;
        frames_ = 0;
    }
    double const weight = weightOfNew(frames_);
    for (std::size_t i = 0; i < passes_.size(); ++i)
        follow(passes_[i].milliseconds, latest_[i].milliseconds, weight);
    follow(frame_, inMilliseconds(whole), weight);
    ++frames_;
}

} // namespace sgview
