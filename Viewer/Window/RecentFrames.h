#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <deque>

namespace sgview {

/// How long the last frames took to draw, and how many there were in the last second.
class RecentFrames {
public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr std::size_t kept = 120;

    /// \param end    when the frame was done
    /// \param taken  to draw it
    void add(Time end, std::chrono::duration<double, std::milli> taken);

    /// Frames that were done in the second before `now`.
    [[nodiscard]] std::size_t lastSecond(Time now) const;

    /// Milliseconds, the oldest first; `kept` of them, 0 where there was no frame yet.
    [[nodiscard]] std::array<float, kept> milliseconds() const;

    [[nodiscard]] float longest() const; ///< of those; milliseconds

private:
    std::deque<Time> ends_; ///< of the last second
    std::array<float, kept> ring_{};
    std::size_t next_ = 0;
};

} // namespace sgview
