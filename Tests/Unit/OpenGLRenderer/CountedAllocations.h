#pragma once

#include <cstddef>

/// What operator new has given out since the process started, and what it is to refuse; linked in, it is that
/// of the whole program.
namespace CountedAllocations {

[[nodiscard]] std::size_t count();
[[nodiscard]] std::size_t bytes();

/// Has one allocation fail, the n-th from now, not counting those that are spared.
void fail(std::size_t n, bool (*isSpared)());

/// Whether it still waits to fail; none does from now on.
bool stopFailing();

} // namespace CountedAllocations
