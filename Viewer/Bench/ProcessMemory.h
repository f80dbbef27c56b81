#pragma once

#include <cstddef>
#include <cstdint>

namespace sgview {

/// The most memory that this process has had in use at any time, bytes.
[[nodiscard]] std::int64_t peakMemory();

/// How many pages this process has touched for the first time, all threads, or had to have read back in.
[[nodiscard]] std::int64_t pageFaultCount();

/// How much this process's heap holds, bytes: what C code has asked for is among it.
[[nodiscard]] std::size_t heapInUse();

/// Keeps freed memory in the process from now on, and has so many bytes of it ready: what is allocated later
/// touches no page for the first time until that much is in use. Of more than is sensible, half of the memory
/// that the system can spare, it has that much ready.
void keepMemory(std::size_t bytes);

/// Whether Mesa throws all drawing away (GALLIUM_NOOP), which leaves the cost of the application and of
/// OpenGL's front end.
[[nodiscard]] bool isDrawingDiscarded();

/// What Mesa's driver that throws drawing away may lose a draw, bytes: it never frees what it is told to
/// upload.
inline constexpr std::size_t lostADiscardedDraw = 256;

} // namespace sgview
