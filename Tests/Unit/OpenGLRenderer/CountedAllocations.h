#pragma once

#include <cstddef>

/// What operator new has given out since the process started; linked in, it counts for the whole program.
namespace CountedAllocations {

[[nodiscard]] std::size_t count();
[[nodiscard]] std::size_t bytes();

} // namespace CountedAllocations
