#pragma once

#include "Viewer/Platform/Picture.h"

#include <cstddef>

namespace sgview {

/// How two pictures of one size differ, by the measure of the graphics diagnostic: a pixel mismatches if the
/// squared distance of its four components is more than 100.
struct PictureDifference {
    std::size_t pixels = 0;     ///< of each picture
    std::size_t mismatches = 0; ///< pixels
    int largest = 0;            ///< difference of a component, of 255
    int largestElsewhere = 0;   ///< the same without the pixels that mismatch

    /// The diagnostic trusts a technique whose pictures mismatch in less than this share of their pixels.
    static constexpr double toleratedShare = 0.01;

    [[nodiscard]] double share() const
    {
        return static_cast<double>(mismatches) / static_cast<double>(pixels);
    }
    [[nodiscard]] bool isTolerable() const { return share() < toleratedShare; }
};

[[nodiscard]] PictureDifference measureDifference(Picture const& a, Picture const& b);

/// The differences, `amplification` times as bright; black where the pictures agree.
[[nodiscard]] Picture amplifiedDifference(Picture const& a, Picture const& b, int amplification);

} // namespace sgview
