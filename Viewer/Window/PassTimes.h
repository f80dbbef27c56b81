#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// What a frame and each of its passes cost: means over the same recent frames, so that they agree.
class PassTimes {
public:
    struct Pass {
        std::string name;
        double milliseconds = 0.0;
    };

    /// Comes before a frame's first pass.
    void beginFrame() { latest_.clear(); }

    void add(std::string_view name, std::chrono::nanoseconds time);

    /// Comes after a frame's last pass.
    /// \param whole  what the frame took in all
    void endFrame(std::chrono::nanoseconds whole);

    /// In the order in which they draw. A frame of other passes than the one before begins anew.
    [[nodiscard]] std::vector<Pass> const& passes() const { return passes_; }

    /// Milliseconds of a frame; 0 before the first.
    [[nodiscard]] double frame() const { return frame_; }

    /// Begins anew.
    void clear() { *this = {}; }

private:
    [[nodiscard]] bool isOfSamePasses() const;

    std::vector<Pass> latest_; ///< of the frame that goes on
    std::vector<Pass> passes_;
    double frame_ = 0.0;
    std::size_t frames_ = 0; ///< in the means, with the first
};

} // namespace sgview
