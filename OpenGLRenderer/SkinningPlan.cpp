#include "OpenGLRenderer/SkinningPlan.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace {

constexpr std::size_t blockSize = SkinningGroup::blockSize;
constexpr std::size_t restRows = 6;
constexpr std::size_t matrixSize = 12;

static_assert(sizeof(BoneTransform) == matrixSize * sizeof(double));

constexpr std::array<double, matrixSize> noBone{};

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

double const* matrixOf(std::int32_t bone, std::span<BoneTransform const> pose)
{
    auto const index = static_cast<std::size_t>(bone);
    return bone >= 0 && index < pose.size() ? reinterpret_cast<double const*>(&pose[index]) : noBone.data();
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
    std::size_t mostBones = 0;
    for (Group const& group : groups_)
        mostBones = std::max(mostBones, group.boneCount);
    matrices_.resize(mostBones);
}

void SkinningPlan::addGroup(std::span<std::uint32_t const> vertices, std::span<Vector3 const> positions,
                            std::span<UVector3 const> normals, BoneWeightsData const& weights)
{
    std::span<BoneInfluence const> const influences = influencesOf(weights, vertices.front());
    std::size_t const rows = restRows + influences.size();
    std::size_t const blocks = (vertices.size() + blockSize - 1) / blockSize;
    std::size_t const firstNumber = blocks_.size();
    groups_.push_back({bones_.size(), influences.size(),
                       static_cast<std::size_t>(vertices.data() - order_.data()), vertices.size(),
                       firstNumber, vertices.back() - vertices.front() + 1 == vertices.size()});
    for (BoneInfluence const& influence : influences)
        bones_.push_back(influence.bone);
    blocks_.resize(firstNumber + blocks * rows * blockSize);
    for (std::size_t i = 0; i < blocks * blockSize; ++i) {
        std::uint32_t const vertex = vertices[std::min(i, vertices.size() - 1)];
        double* const block = &blocks_[firstNumber + i / blockSize * rows * blockSize];
        std::size_t const lane = i % blockSize;
        UVector3 const normal = vertex < normals.size() ? normals[vertex] : UVector3();
        setRow(block, lane, positions[vertex]);
        Vector3 const turning = influences.empty() ? Vector3(normal) : tangentsProduct(normal);
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
    for (Group const& group : groups_) {
        for (std::size_t i = 0; i < group.boneCount; ++i)
            matrices_[i] = matrixOf(bones_[group.firstBone + i], pose);
        std::uint32_t const* const places = &order_[group.firstVertex];
        skinGroup({&blocks_[group.firstNumber], group.vertices, matrices_.data(), group.boneCount,
                   group.consecutive ? nullptr : places, places[0]},
                  positions, normals);
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
