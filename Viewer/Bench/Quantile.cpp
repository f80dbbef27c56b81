#include "Viewer/Bench/Quantile.h"

#include <algorithm>
#include <cmath>

double sgview::quantile(std::vector<double> values, double share)
{
    auto const rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
    auto const place = values.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(rank, 1) - 1);
    std::ranges::nth_element(values, place);
    return *place;
}
