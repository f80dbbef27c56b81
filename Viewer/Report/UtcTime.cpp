#include "Viewer/Report/UtcTime.h"

#include <array>
#include <ctime>

namespace sgview {

std::string utcText(std::chrono::system_clock::time_point moment)
{
    std::time_t const seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts)};
}

} // namespace sgview
