#pragma once

#include <vector>

namespace sgview {

/// The value that a share of all values does not exceed: 0.5 gives the median. The nearest rank, no mean of
/// two.
/// \param values  at least one
/// \param share   0 to 1
[[nodiscard]] double quantile(std::vector<double> values, double share);

} // namespace sgview
