#include "Viewer/Bench/GridLayout.h"

#include <cmath>
#include <numbers>

namespace sgview {

GridLayout::GridLayout(int count) : side_(static_cast<int>(std::ceil(std::sqrt(static_cast<double>(count)))))
{
}

Vector3 GridLayout::place(int index) const
{
    double const middle = (side_ - 1) / 2.0;
    int const column = index % side_;
    int const row = index / side_;
    return {column - middle, row - middle, 0.0};
}

double GridLayout::viewingDistance() const
{
    constexpr double margin = 1.05;
    constexpr double depth = 1.0;
    return margin * side_ / 2.0 / std::tan(std::numbers::pi / 8.0) + depth;
}

} // namespace sgview
