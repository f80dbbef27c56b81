#pragma once

#include <cstdint>

namespace sgview {

/// How often this thread has asked operator new for memory. A program that asks this counts all its calls,
/// and those of the libraries and modules that it loads; what C code asks malloc for is not among them.
[[nodiscard]] std::int64_t allocationCount();

} // namespace sgview
