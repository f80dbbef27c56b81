#pragma once

#include "Maths/Vector3.h"

#include <algorithm>
#include <limits>

namespace sgview {

/// An axis-aligned box around points; empty until the first is added.
struct Bounds {
    Vector3 low{infinite, infinite, infinite};
    Vector3 high{-infinite, -infinite, -infinite};

    [[nodiscard]] bool empty() const { return !(low.x <= high.x); }

    /// A point that is not finite is not counted.
    void add(Vector3 const& point)
    {
        if (!isFinite(point))
            return;
        low = Vector3(std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z));
        high = Vector3(std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z));
    }

    void add(Bounds const& other)
    {
        if (other.empty())
            return;
        add(other.low);
        add(other.high);
    }

private:
    static constexpr double infinite = std::numeric_limits<double>::infinity();
};

} // namespace sgview
