// What the kernels have in common. Each kernel's source defines, in an unnamed namespace, how many lanes it
// works on (2, 4 or 8), and squareRoot and allSafe for them, before it includes this.
#pragma once

#include "OpenGLRenderer/SkinningKernel.h"

namespace {

#define SG_INLINE [[gnu::always_inline]] inline

constexpr std::size_t rowSize = SkinningGroup::blockSize;
constexpr std::size_t restRows = 6; // position and normal
constexpr auto anyCount = static_cast<std::size_t>(-1);

using FloatLanes [[gnu::vector_size(sizeof(float) * lanes)]] = float;

struct Triple {
    Lanes x;
    Lanes y;
    Lanes z;
};

struct Matrices {
    Lanes m[SkinningMatrix::size];
};

SG_INLINE Lanes load(double const* row)
{
    Lanes lane;
    __builtin_memcpy(&lane, __builtin_assume_aligned(row, sizeof lane), sizeof lane);
    return lane;
}

SG_INLINE Triple loadTriple(double const* rows)
{
    return {load(rows), load(rows + rowSize), load(rows + 2 * rowSize)};
}

SG_INLINE Lanes inEachLane(double const (&pair)[2])
{
    if constexpr (lanes == 2)
        return load(pair);
    else
        return pair[0] - Lanes{};
}

/// \tparam count  of the blend's matrices, or anyCount: sums of an unrolled loop stay in registers
template <std::size_t count>
SG_INLINE Matrices blended(SkinningBlend const& blend, double const* weights)
{
    Matrices sum;
    for (std::size_t i = 0; i < SkinningMatrix::size; ++i)
        sum.m[i] = inEachLane(blend.base->pairs[i]);
    std::size_t const end = count == anyCount ? blend.count : count;
    for (std::size_t k = 0; k < end; ++k) {
        Lanes const weight = load(weights + k * rowSize);
        SkinningMatrix const& matrix = *blend.matrices[k];
        for (std::size_t i = 0; i < SkinningMatrix::size; ++i)
            sum.m[i] += weight * inEachLane(matrix.pairs[i]);
    }
    return sum;
}

SG_INLINE Triple transformed(Lanes const (&m)[SkinningMatrix::size], Triple const& p)
{
    return {m[0] * p.x + (m[1] * p.y + (m[2] * p.z + m[9])), m[3] * p.x + (m[4] * p.y + (m[5] * p.z + m[10])),
            m[6] * p.x + (m[7] * p.y + (m[8] * p.z + m[11]))};
}

SG_INLINE Triple cross(Triple const& a, Triple const& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

SG_INLINE Lanes dot(Triple const& a, Triple const& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// The normal through the cofactors of the linear map, whose rows are a, b and c: those are b x c, c x a and
/// a x b, and (b x c) n is b (c x n).
SG_INLINE Triple turned(Lanes const (&m)[SkinningMatrix::size], Triple const& n)
{
    Triple const a{m[0], m[1], m[2]};
    Triple const b{m[3], m[4], m[5]};
    Triple const c{m[6], m[7], m[8]};
    Triple const cn = cross(c, n);
    Triple const na = cross(n, a);
    return {dot(b, cn), -dot(c, na), dot(b, na)};
}

[[gnu::noinline]] Triple normalisedEach(Triple n)
{
    for (int i = 0; i < lanes; ++i) {
        double x = n.x[i];
        double y = n.y[i];
        double z = n.z[i];
        normaliseExtreme(&x, &y, &z);
        n.x[i] = x;
        n.y[i] = y;
        n.z[i] = z;
    }
    return n;
}

SG_INLINE Triple normalised(Triple const& n)
{
    Lanes const squared = dot(n, n);
    if (!allSafe(squared)) [[unlikely]]
        return normalisedEach(n);
    Lanes const scale = 1.0 / squareRoot(squared);
    return {n.x * scale, n.y * scale, n.z * scale};
}

/// x, y and z of the first vertex, of the second, and so on.
template <typename Vector>
struct Interleaved {
    Vector first;
    Vector second;
    Vector third;
};

template <typename Vector>
SG_INLINE Interleaved<Vector> interleaved(Vector x, Vector y, Vector z)
{
    if constexpr (lanes == 2) {
        return {__builtin_shufflevector(x, y, 0, 2), __builtin_shufflevector(z, x, 0, 3),
                __builtin_shufflevector(y, z, 1, 3)};
    } else if constexpr (lanes == 4) {
        Vector const xy = __builtin_shufflevector(x, y, 0, 2, 4, 6);
        Vector const yz = __builtin_shufflevector(y, z, 1, 3, 5, 7);
        Vector const zx = __builtin_shufflevector(z, x, 0, 2, 5, 7);
        return {__builtin_shufflevector(xy, zx, 0, 2, 4, 6), __builtin_shufflevector(yz, xy, 0, 2, 5, 7),
                __builtin_shufflevector(zx, yz, 1, 3, 5, 7)};
    } else {
        Vector const first = __builtin_shufflevector(x, y, 0, 8, -1, 1, 9, -1, 2, 10);
        Vector const second = __builtin_shufflevector(x, y, -1, 3, 11, -1, 4, 12, -1, 5);
        Vector const third = __builtin_shufflevector(x, y, 13, -1, 6, 14, -1, 7, 15, -1);
        return {__builtin_shufflevector(first, z, 0, 1, 8, 3, 4, 9, 6, 7),
                __builtin_shufflevector(second, z, 10, 1, 2, 11, 4, 5, 12, 7),
                __builtin_shufflevector(third, z, 0, 13, 2, 3, 14, 5, 6, 15)};
    }
}

template <typename Number, typename Vector>
SG_INLINE void storeAll(Number* target, Vector first, Vector second, Vector third)
{
    constexpr std::size_t size = sizeof(Vector);
    __builtin_memcpy(target, &first, size); // one by one: all at once would go by way of the stack
    __builtin_memcpy(target + lanes, &second, size);
    __builtin_memcpy(target + 2 * lanes, &third, size);
}

SG_INLINE void store(double* target, Triple const& t)
{
    auto const [first, second, third] = interleaved(t.x, t.y, t.z);
    storeAll(target, first, second, third);
}

SG_INLINE FloatLanes toFloats(Lanes doubles)
{
    return __builtin_convertvector(doubles, FloatLanes);
}

SG_INLINE void store(float* target, Triple const& t)
{
    if constexpr (lanes == 2) { // two floats are too few to be shuffled
        auto const [first, second, third] = interleaved(t.x, t.y, t.z);
        storeAll(target, toFloats(first), toFloats(second), toFloats(third));
    } else {
        auto const [first, second, third] = interleaved(toFloats(t.x), toFloats(t.y), toFloats(t.z));
        storeAll(target, first, second, third);
    }
}

/// Moves the vertices of one block, from `rows` on, and writes them one after another.
template <std::size_t count, typename T>
SG_INLINE void skinBlock(SkinningGroup const& group, double const* rows, T* positions, T* normals)
{
    double const* const weights = rows + (restRows + group.blend.unusedWeights) * rowSize;
    for (std::size_t lane = 0; lane < rowSize; lane += lanes) {
        Matrices const sum = blended<count>(group.blend, weights + lane);
        // This way round there is something to do while roots are taken.
        Triple const normal = normalised(turned(sum.m, loadTriple(rows + 3 * rowSize + lane)));
        Triple const position = transformed(sum.m, loadTriple(rows + lane));
        store(positions + 3 * lane, position);
        store(normals + 3 * lane, normal);
    }
}

template <typename T>
void copyVertex(T* target, T const* source)
{
    for (int i = 0; i < 3; ++i)
        target[i] = source[i];
}

template <std::size_t count, typename T>
void skinBlocks(SkinningGroup const& group, T* positions, T* normals)
{
    std::size_t const stride = (restRows + group.blend.unusedWeights + group.blend.count) * rowSize;
    double const* block = group.blocks;
    std::size_t vertex = 0;
    if (!group.places)
        for (; vertex + rowSize <= group.vertices; vertex += rowSize, block += stride)
            skinBlock<count>(group, block, positions + 3 * (group.first + vertex),
                             normals + 3 * (group.first + vertex));
    for (; vertex < group.vertices; vertex += rowSize, block += stride) {
        T blockPositions[3 * rowSize];
        T blockNormals[3 * rowSize];
        skinBlock<count>(group, block, blockPositions, blockNormals);
        for (std::size_t i = 0; i < rowSize && vertex + i < group.vertices; ++i) {
            std::size_t const place = group.places ? group.places[vertex + i] : group.first + vertex + i;
            copyVertex(positions + 3 * place, blockPositions + 3 * i);
            copyVertex(normals + 3 * place, blockNormals + 3 * i);
        }
    }
}

template <typename T>
void skin(SkinningGroup const& group, T* positions, T* normals)
{
    switch (group.blend.count) {
    case 0:
        return skinBlocks<0>(group, positions, normals);
    case 1:
        return skinBlocks<1>(group, positions, normals);
    case 2:
        return skinBlocks<2>(group, positions, normals);
    case 3:
        return skinBlocks<3>(group, positions, normals);
    default:
        return skinBlocks<anyCount>(group, positions, normals);
    }
}

void skinToDoubles(SkinningGroup const& group, double* positions, double* normals)
{
    skin(group, positions, normals);
}

void skinToFloats(SkinningGroup const& group, float* positions, float* normals)
{
    skin(group, positions, normals);
}

} // namespace
