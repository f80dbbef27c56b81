#include "OpenGLRenderer/SkinningMatrices.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// A difference is as exact as the larger of the two. Up to here nobody sees that; beyond, a bone without
// weight could spoil what another does.
constexpr double mostUnlike = 1000.0;

constexpr SkinningMatrix zero{};

static_assert(sizeof(BoneTransform) == SkinningMatrix::size * sizeof(double));

double const* numbersOf(std::int32_t bone, std::span<BoneTransform const> pose)
{
    auto const index = static_cast<std::size_t>(bone);
    return bone >= 0 && index < pose.size() ? reinterpret_cast<double const*>(&pose[index]) : nullptr;
}

SkinningMatrix toPairs(double const* numbers)
{
    SkinningMatrix matrix;
    for (std::size_t i = 0; i < SkinningMatrix::size; ++i)
        matrix.pairs[i][0] = matrix.pairs[i][1] = numbers[i];
    return matrix;
}

double largestOf(double const* numbers)
{
    double largest = 0.0;
    for (std::size_t i = 0; i < SkinningMatrix::size; ++i)
        largest = std::max(largest, std::abs(numbers[i]));
    return largest;
}

void setDifference(SkinningMatrix& difference, SkinningMatrix const& a, SkinningMatrix const& b)
{
    for (std::size_t i = 0; i < SkinningMatrix::size; ++i)
        for (std::size_t k = 0; k < 2; ++k)
            difference.pairs[i][k] = a.pairs[i][k] - b.pairs[i][k];
}

} // namespace

SkinningMatrices::SkinningMatrices(std::vector<std::int32_t> bones, std::size_t most)
    : bones_(std::move(bones)),
      matrices_(bones_.size()),
      sizes_(bones_.size()),
      differences_(most),
      blended_(most)
{
}

void SkinningMatrices::set(std::span<BoneTransform const> pose)
{
    for (std::size_t i = 0; i < bones_.size(); ++i) {
        double const* const numbers = numbersOf(bones_[i], pose);
        matrices_[i] = numbers ? toPairs(numbers) : zero;
        sizes_[i] = numbers ? largestOf(numbers) : 0.0;
    }
}

SkinningBlend SkinningMatrices::blend(std::span<std::uint32_t const> bones)
{
    for (std::size_t i = 0; i < bones.size(); ++i)
        blended_[i] = &matrices_[bones[i]];
    return {&zero, blended_.data(), bones.size(), 0};
}

SkinningBlend SkinningMatrices::relativeBlend(std::span<std::uint32_t const> bones)
{
    if (!areAlike(bones))
        return blend(bones);
    SkinningMatrix const& base = matrices_[bones[0]];
    std::size_t const others = bones.size() - 1;
    for (std::size_t i = 0; i < others; ++i) {
        setDifference(differences_[i], matrices_[bones[i + 1]], base);
        blended_[i] = &differences_[i];
    }
    return {&base, blended_.data(), others, 1};
}

bool SkinningMatrices::areAlike(std::span<std::uint32_t const> bones) const
{
    double smallest = sizes_[bones[0]];
    double largest = smallest;
    for (std::uint32_t const bone : bones.subspan(1)) {
        smallest = std::min(smallest, sizes_[bone]);
        largest = std::max(largest, sizes_[bone]);
    }
    return largest <= mostUnlike * smallest;
}
