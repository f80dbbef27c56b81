#include "OpenGLRenderer/SkinningPlan.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

constexpr std::size_t blockSize = SkinningGroup::blockSize;
constexpr std::size_t restRows = 6;

// As many as make up for taking differences of matrices first.
constexpr std::size_t fewestRelative = 4 * blockSize;

// Rounding of a sum of some weights; a vertex is off by no more than that.
constexpr double sumTolerance = 1e-14;

std::span<BoneInfluence const> influencesOf(BoneWeightsData const& weights, std::uint32_t vertex)
{
    return vertex < weights.size() ? weights.influences(vertex) : std::span<BoneInfluence const>();
}

/// By the bones in the order of their influence.
bool hasLesserBones(std::span<BoneInfluence const> a, std::span<BoneInfluence const> b)
{
    return std::ranges::lexicographical_compare(a, b, {}, &BoneInfluence::bone, &BoneInfluence::bone);
}

bool hasSameBones(std::span<BoneInfluence const> a, std::span<BoneInfluence const> b)
{
    return std::ranges::equal(a, b, {}, &BoneInfluence::bone, &BoneInfluence::bone);
}

/// What the cross product of the two tangents of a normal is: the normal, or the z axis for one of no
/// direction.
Vector3 tangentsProduct(Vector3 const& normal)
{
    Vector3 a;
    Vector3 b;
    getBasis(normal, a, b);
    return cross(a, b);
}

void setRow(double* row, std::size_t lane, Vector3 const& vector)
{
    row[lane] = vector.x;
    row[blockSize + lane] = vector.y;
    row[2 * blockSize + lane] = vector.z;
}

bool sumToOne(std::span<BoneInfluence const> influences)
{
    double sum = 0.0;
    for (BoneInfluence const& influence : influences)
        sum += influence.weight;
    return std::abs(sum - 1.0) <= sumTolerance;
}

} // namespace

SkinningPlan::SkinningPlan(std::span<Vector3 const> positions, std::span<UVector3 const> normals,
                           BoneWeightsData const& weights)
    : vertexCount_(positions.size()), order_(positions.size())
{
    std::iota(order_.begin(), order_.end(), 0U);
    auto const comesBefore = [&](std::uint32_t a, std::uint32_t b) {
        return hasLesserBones(influencesOf(weights, a), influencesOf(weights, b));
    };
    if (!std::ranges::is_sorted(order_, comesBefore))
        std::ranges::stable_sort(order_, comesBefore);
    auto start = order_.begin();
    while (start != order_.end()) {
        auto const end = std::find_if_not(start, order_.end(), [&](std::uint32_t vertex) {
            return hasSameBones(influencesOf(weights, vertex), influencesOf(weights, *start));
        });
        addGroup({start, end}, positions, normals, weights);
        start = end;
    }
    setBones(weights);
}

void SkinningPlan::setBones(BoneWeightsData const& weights)
{
    std::vector<std::int32_t> all;
    std::size_t most = 0;
    for (Group& group : groups_) {
        std::span<BoneInfluence const> const influences = influencesOf(weights, order_[group.firstVertex]);
        group.firstBone = all.size();
        std::ranges::transform(influences, std::back_inserter(all), &BoneInfluence::bone);
        most = std::max(most, influences.size());
    }
    std::vector<std::int32_t> used = all;
    std::ranges::sort(used);
    used.erase(std::ranges::unique(used).begin(), used.end());
    for (std::int32_t const bone : all)
        bones_.push_back(static_cast<std::uint32_t>(std::ranges::lower_bound(used, bone) - used.begin()));
    matrices_ = SkinningMatrices(std::move(used), most);
}

void SkinningPlan::addGroup(std::span<std::uint32_t const> vertices, std::span<Vector3 const> positions,
                            std::span<UVector3 const> normals, BoneWeightsData const& weights)
{
    std::size_t const boneCount = influencesOf(weights, vertices.front()).size();
    std::size_t const rows = restRows + boneCount;
    std::size_t const blocks = (vertices.size() + blockSize - 1) / blockSize;
    std::size_t const firstNumber = blocks_.size();
    bool const sumsToOne = std::ranges::all_of(
        vertices, [&](std::uint32_t vertex) { return sumToOne(influencesOf(weights, vertex)); });
    groups_.push_back({.firstBone = 0,
                       .boneCount = boneCount,
                       .firstVertex = static_cast<std::size_t>(vertices.data() - order_.data()),
                       .vertices = vertices.size(),
                       .firstNumber = firstNumber,
                       .consecutive = vertices.back() - vertices.front() + 1 == vertices.size(),
                       .relative = sumsToOne && (boneCount == 1 || vertices.size() >= fewestRelative)});
    blocks_.resize(firstNumber + blocks * rows * blockSize);
    for (std::size_t i = 0; i < blocks * blockSize; ++i) {
        std::uint32_t const vertex = vertices[std::min(i, vertices.size() - 1)];
        double* const block = &blocks_[firstNumber + i / blockSize * rows * blockSize];
        std::size_t const lane = i % blockSize;
        UVector3 const normal = vertex < normals.size() ? normals[vertex] : UVector3();
        setRow(block, lane, positions[vertex]);
        Vector3 const turning = boneCount == 0 ? Vector3(normal) : tangentsProduct(normal);
        setRow(block + 3 * blockSize, lane, turning);
        double* weight = block + restRows * blockSize + lane;
        for (BoneInfluence const& influence : influencesOf(weights, vertex)) {
            *weight = influence.weight;
            weight += blockSize;
        }
    }
}

template <typename T>
void SkinningPlan::skinAll(void (*skinGroup)(SkinningGroup const&, T*, T*),
                           std::span<BoneTransform const> pose, T* positions, T* normals) const
{
    matrices_.set(pose);
    for (Group const& group : groups_) {
        if (group.boneCount == 0) {
            copyRest(group, positions, normals);
            continue;
        }
        std::uint32_t const* const places = &order_[group.firstVertex];
        std::span const bones(&bones_[group.firstBone], group.boneCount);
        skinGroup({&blocks_[group.firstNumber], group.vertices,
                   group.relative ? matrices_.relativeBlend(bones) : matrices_.blend(bones),
                   group.consecutive ? nullptr : places, places[0]},
                  positions, normals);
    }
}

template <typename T>
void SkinningPlan::copyRest(Group const& group, T* positions, T* normals) const
{
    for (std::size_t i = 0; i < group.vertices; ++i) {
        double const* const block = &blocks_[group.firstNumber + i / blockSize * restRows * blockSize];
        std::size_t const place = 3 * std::size_t{order_[group.firstVertex + i]};
        for (std::size_t k = 0; k < 3; ++k) {
            positions[place + k] = static_cast<T>(block[k * blockSize + i % blockSize]);
            normals[place + k] = static_cast<T>(block[(3 + k) * blockSize + i % blockSize]);
        }
    }
}

void SkinningPlan::skin(SkinningKernel const& kernel, std::span<BoneTransform const> pose, double* positions,
                        double* normals) const
{
    skinAll(kernel.toDoubles, pose, positions, normals);
}

void SkinningPlan::skin(SkinningKernel const& kernel, std::span<BoneTransform const> pose, float* positions,
                        float* normals) const
{
    skinAll(kernel.toFloats, pose, positions, normals);
}
