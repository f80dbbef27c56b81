#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace sgview {

/// Bytes of memory that hold models of some three million triangles while they are read.
inline constexpr std::uint64_t enoughMemory = std::uint64_t{4} << 30;

/// Bytes without which few models are read.
inline constexpr std::uint64_t leastMemory = std::uint64_t{1} << 30;

/// Bytes that an import may use unless somebody says otherwise: a quarter of what the machine has, so that no
/// file makes it swap, between `leastMemory` and `enoughMemory`.
[[nodiscard]] constexpr std::uint64_t usualMemory(std::uint64_t machineMemory)
{
    return std::clamp(machineMemory / 4, leastMemory, enoughMemory);
}

/// The memory of this machine, bytes.
[[nodiscard]] std::uint64_t machineMemory();

/// What an import may use before it is stopped.
struct ImportLimits {
    std::uint64_t memory = usualMemory(machineMemory()); ///< bytes of address space
    std::uint32_t seconds = 10;                          ///< of processor time, and as many of wall time
};

/// How a model file is imported.
struct ImportOptions {
    ImportLimits limits;
    /// Folders besides the model's own from which textures and side files may be read.
    std::vector<std::filesystem::path> folders;
    /// Pictures are made no larger than this, pixels a side; a power of two.
    std::int32_t largestTextureSide = 2048;
};

} // namespace sgview
