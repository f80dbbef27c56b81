#include "Viewer/Window/ViewLayout.h"

#include <algorithm>

namespace sgview {

ViewLayout layOutView(double width, double height, ViewContent const& content)
{
    constexpr double leastFree = 60.0;
    double const leastFreeBelowStatus = content.isSplit ? 240.0 : 120.0;
    ViewLayout layout{std::max(width, 1.0), std::max(height, 1.0)};
    layout.hasPlayback = content.hasAnimations && layout.height - ViewLayout::playbackRow >= leastFree;
    layout.hasStatus =
        content.hasScene && layout.freeHeight() - ViewLayout::statusRow >= leastFreeBelowStatus;
    return layout;
}

} // namespace sgview
