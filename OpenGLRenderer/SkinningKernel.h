#pragma once

#include <cstddef>
#include <cstdint>

// The sources of the kernels are compiled for instruction sets that not every processor has, so this header,
// and what they include beside it, defines no function that another source could share with them.

/// The linear map of a bone row by row, then the translation; each number twice, as the narrowest vectors
/// take it.
struct SkinningMatrix {
    static constexpr std::size_t size = 12;

    alignas(16) double pairs[size][2];
};

/// The matrix that a vertex goes by: `base + w[0] * matrices[0] + w[1] * matrices[1] + ...`
struct SkinningBlend {
    SkinningMatrix const* base;
    SkinningMatrix const* const* matrices;
    std::size_t count;
    std::size_t unusedWeights; ///< that a vertex has before those
};

/// Vertices that the same bones move, in blocks of `SkinningGroup::blockSize`.
struct SkinningGroup {
    static constexpr std::size_t blockSize = 8;

    /// A block is rows of `blockSize`: x, y and z of the positions, x, y and z of the normals, then a row for
    /// each weight. The last block is filled up with copies of its last vertex. Starts at a multiple of 64
    /// bytes.
    double const* blocks;
    std::size_t vertices;
    SkinningBlend blend;
    /// Where each vertex goes; null where they go one after another from `first` on.
    std::uint32_t const* places;
    std::size_t first;
};

/// Moves a group's vertices and writes them, x, y, z a vertex, as doubles or as floats. Positions become the
/// weighted sum of the bones' images, normals are turned by the cofactors of the weighted sum of the linear
/// maps, as two tangents through it would turn them, and made of length 1.
struct SkinningKernel {
    char const* name;
    bool (*isSupported)(); ///< by the processor that the process runs on
    void (*toDoubles)(SkinningGroup const&, double* positions, double* normals);
    void (*toFloats)(SkinningGroup const&, float* positions, float* normals);
};

extern SkinningKernel const portableSkinningKernel;
extern SkinningKernel const avx2SkinningKernel;   ///< where SG_X86_KERNELS is defined
extern SkinningKernel const avx512SkinningKernel; ///< the same

/// Makes a vector whose square is too large or too small to be told of length 1, as UVector3 does.
void normaliseExtreme(double* x, double* y, double* z);
