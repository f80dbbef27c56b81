#include "Viewer/Window/Notices.h"

#include <algorithm>
#include <utility>

namespace sgview {

void Notices::tell(std::string text, std::chrono::seconds life)
{
    add(std::move(text), false, life);
}

void Notices::warn(std::string text)
{
    constexpr std::chrono::seconds life{15};
    add(std::move(text), true, life);
}

bool Notices::expire(Time now)
{
    return std::erase_if(notices_, [now](Notice const& notice) { return notice.end <= now; }) > 0;
}

void Notices::add(std::string text, bool isError, std::chrono::seconds life)
{
    constexpr std::size_t most = 4;
    std::erase_if(notices_, [&text](Notice const& notice) { return notice.text == text; });
    if (notices_.size() == most)
        notices_.erase(notices_.begin());
    notices_.push_back({std::move(text), isError, std::chrono::steady_clock::now() + life});
}

} // namespace sgview
