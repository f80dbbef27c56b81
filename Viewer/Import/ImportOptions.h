#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace sgview {

/// What an import may use before it is stopped.
struct ImportLimits {
    std::uint64_t memory = std::uint64_t{1} << 30; ///< bytes of address space
    std::uint32_t seconds = 10;                    ///< of processor time, and as many of wall time
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
