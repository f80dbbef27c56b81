#pragma once

#include <cstdint>

/// How many blocks of operator new this process holds.
[[nodiscard]] std::int64_t liveAllocations();
