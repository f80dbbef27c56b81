#include "Viewer/Window/PassTimes.h"

namespace sgview {

void PassTimes::add(std::string_view name, std::chrono::nanoseconds time)
{
    constexpr double weightOfNew = 0.1;
    double const milliseconds = std::chrono::duration<double, std::milli>(time).count();
    if (next_ == passes_.size())
        passes_.emplace_back();
    Pass& pass = passes_[next_++];
    if (pass.name == name)
        pass.milliseconds += weightOfNew * (milliseconds - pass.milliseconds);
    else
        pass = {std::string(name), milliseconds};
}

} // namespace sgview
