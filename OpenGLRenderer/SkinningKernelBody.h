// What the kernels have in common. Each kernel's source defines, in an unnamed namespace, how many lanes it
// works on, and squareRoot and allSafe for them, before it includes this.
#pragma once

#include "OpenGLRenderer/SkinningKernel.h"

#include <utility>

namespace {

#define SG_INLINE [[gnu::always_inline]] inline

constexpr std::size_t rowSize = SkinningGroup::blockSize;
constexpr std::size_t restRows = 6; // position and normal

using FloatLanes [[gnu::vector_size(sizeof(float) * lanes)]] = float;

struct Triple {
    Lanes x;
    Lanes y;
    Lanes z;
};

/// A weighted sum of bones: the linear map row by row, then the translation.
struct Blend {
    Lanes m[12];
};

SG_INLINE Lanes load(double const* row)
{
    Lanes lane;
    __builtin_memcpy(&lane, row, sizeof lane);
    return lane;
}

SG_INLINE Triple loadTriple(double const* rows)
{
    return {load(rows), load(rows + rowSize), load(rows + 2 * rowSize)};
}

SG_INLINE Blend blend(double const* weights, double const* const* bones, std::size_t boneCount)
{
    Blend sum;
    Lanes const first = load(weights);
    for (int i = 0; i < 12; ++i)
        sum.m[i] = first * bones[0][i];
    for (std::size_t bone = 1; bone < boneCount; ++bone) {
        Lanes const weight = load(weights + bone * rowSize);
        double const* const matrix = bones[bone];
        for (int i = 0; i < 12; ++i)
            sum.m[i] += weight * matrix[i];
    }
    return sum;
}

SG_INLINE Triple transformed(Blend const& b, Triple const& p)
{
    return {b.m[0] * p.x + (b.m[1] * p.y + (b.m[2] * p.z + b.m[9])),
            b.m[3] * p.x + (b.m[4] * p.y + (b.m[5] * p.z + b.m[10])),
            b.m[6] * p.x + (b.m[7] * p.y + (b.m[8] * p.z + b.m[11]))};
}

SG_INLINE Triple turned(Blend const& b, Triple const& n)
{
    Lanes const* const m = b.m;
    return {(m[4] * m[8] - m[5] * m[7]) * n.x + (m[5] * m[6] - m[3] * m[8]) * n.y +
                (m[3] * m[7] - m[4] * m[6]) * n.z,
            (m[2] * m[7] - m[1] * m[8]) * n.x + (m[0] * m[8] - m[2] * m[6]) * n.y +
                (m[1] * m[6] - m[0] * m[7]) * n.z,
            (m[1] * m[5] - m[2] * m[4]) * n.x + (m[2] * m[3] - m[0] * m[5]) * n.y +
                (m[0] * m[4] - m[1] * m[3]) * n.z};
}

[[gnu::noinline]] void normaliseEach(Triple& n)
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
}

SG_INLINE Triple normalised(Triple n)
{
    Lanes const squared = n.x * n.x + n.y * n.y + n.z * n.z;
    if (!allSafe(squared)) [[unlikely]] {
        normaliseEach(n);
        return n;
    }
    Lanes const scale = 1.0 / squareRoot(squared);
    return {n.x * scale, n.y * scale, n.z * scale};
}

/// Element `i` of part `part` of x, y, z a vertex: from the first two of the three rows.
constexpr int fromFirstTwo(int part, int i)
{
    int const element = part * lanes + i;
    int const vertex = element / 3;
    return element % 3 == 0 ? vertex : element % 3 == 1 ? lanes + vertex : -1;
}

/// The same from what that gives and the third row.
constexpr int withThird(int part, int i)
{
    int const element = part * lanes + i;
    return element % 3 == 2 ? lanes + element / 3 : i;
}

template <int part, typename Vector, int... i>
SG_INLINE Vector interleaved(Vector x, Vector y, Vector z, std::integer_sequence<int, i...>)
{
    Vector const xy = __builtin_shufflevector(x, y, fromFirstTwo(part, i)...);
    return __builtin_shufflevector(xy, z, withThird(part, i)...);
}

template <int part, typename T, typename Vector>
SG_INLINE void storePart(T* target, Vector x, Vector y, Vector z)
{
    Vector const vector = interleaved<part>(x, y, z, std::make_integer_sequence<int, lanes>());
    __builtin_memcpy(target + part * lanes, &vector, sizeof vector);
}

template <typename T, typename Vector>
SG_INLINE void storeAll(T* target, Vector x, Vector y, Vector z)
{
    storePart<0>(target, x, y, z);
    storePart<1>(target, x, y, z);
    storePart<2>(target, x, y, z);
}

SG_INLINE void store(double* target, Triple const& t)
{
    storeAll(target, t.x, t.y, t.z);
}

SG_INLINE void store(float* target, Triple const& t)
{
    storeAll(target, __builtin_convertvector(t.x, FloatLanes), __builtin_convertvector(t.y, FloatLanes),
             __builtin_convertvector(t.z, FloatLanes));
}

/// Moves the vertices of one block, from `rows` on, and writes them one after another.
template <typename T>
SG_INLINE void skinBlock(SkinningGroup const& group, double const* rows, T* positions, T* normals)
{
    for (std::size_t lane = 0; lane < rowSize; lane += lanes, rows += lanes) {
        Triple position = loadTriple(rows);
        Triple normal = loadTriple(rows + 3 * rowSize);
        if (group.boneCount > 0) {
            Blend const sum = blend(rows + restRows * rowSize, group.bones, group.boneCount);
            position = transformed(sum, position);
            normal = normalised(turned(sum, normal));
        }
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

template <typename T>
void skin(SkinningGroup const& group, T* positions, T* normals)
{
    std::size_t const stride = (restRows + group.boneCount) * rowSize;
    double const* block = group.blocks;
    std::size_t vertex = 0;
    if (!group.places)
        for (; vertex + rowSize <= group.vertices; vertex += rowSize, block += stride)
            skinBlock(group, block, positions + 3 * (group.first + vertex),
                      normals + 3 * (group.first + vertex));
    for (; vertex < group.vertices; vertex += rowSize, block += stride) {
        T blockPositions[3 * rowSize];
        T blockNormals[3 * rowSize];
        skinBlock(group, block, blockPositions, blockNormals);
        for (std::size_t i = 0; i < rowSize && vertex + i < group.vertices; ++i) {
            std::size_t const place = group.places ? group.places[vertex + i] : group.first + vertex + i;
            copyVertex(positions + 3 * place, blockPositions + 3 * i);
            copyVertex(normals + 3 * place, blockNormals + 3 * i);
        }
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
