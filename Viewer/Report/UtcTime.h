#pragma once

#include <chrono>
#include <string>

namespace sgview {

/// "2026-11-22 02:13:05", in coordinated universal time.
[[nodiscard]] std::string utcText(std::chrono::system_clock::time_point moment);

} // namespace sgview
