#pragma once

#include <cstdint>
#include <string>

namespace sgview {

/// With commas between thousands: "262,144".
[[nodiscard]] std::string countText(std::int64_t count);

/// To four digits, three decimals at most: "79.99", "0.764", "1,238".
[[nodiscard]] std::string measureText(double value);

/// The fewest digits that read back as the same number: "0.1", "1e+300".
[[nodiscard]] std::string exactText(double value);

/// In percent, to four decimals at most: "3.3066%", "0%".
[[nodiscard]] std::string shareText(double share);

} // namespace sgview
