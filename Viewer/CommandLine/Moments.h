#pragma once

#include <cstdint>
#include <vector>

namespace sgview {

/// Moments of an animation: so many, spread over its length, or those that `seconds` lists.
struct Moments {
    static constexpr std::uint32_t most = 16;
    static constexpr std::uint32_t usualCount = 3;
    static constexpr double latest = 1e6; ///< seconds

    std::uint32_t count = usualCount; ///< 1 to `most`
    std::vector<double> seconds;      ///< from the animation's start, at most `most`

    /// In seconds: as listed, or the middles of so many equal stretches.
    [[nodiscard]] std::vector<double> of(double length) const
    {
        if (!seconds.empty())
            return seconds;
        std::vector<double> middles;
        for (std::uint32_t i = 0; i < count; ++i)
            middles.push_back(length * (i + 0.5) / count);
        return middles;
    }
};

} // namespace sgview
