#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// What each pass of a frame costs, smoothed over some frames.
class PassTimes {
public:
    struct Pass {
        std::string name;
        double milliseconds = 0.0;
    };

    /// Comes before a frame's first pass.
    void beginFrame() { next_ = 0; }

    void add(std::string_view name, std::chrono::nanoseconds time);

    /// In the order in which they draw. Passes that the last frame did not have are forgotten.
    [[nodiscard]] std::vector<Pass> const& passes() const { return passes_; }

    /// Comes after a frame's last pass.
    void endFrame() { passes_.resize(next_); }

    void clear() { passes_.clear(); }

private:
    std::vector<Pass> passes_;
    std::size_t next_ = 0;
};

} // namespace sgview
