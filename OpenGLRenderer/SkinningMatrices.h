#pragma once

#include "Maths/BoneTransform.h"
#include "OpenGLRenderer/SkinningKernel.h"

#include <cstdint>
#include <span>
#include <vector>

/// A pose as kernels take it: the matrices that groups of vertices go by.
class SkinningMatrices {
public:
    SkinningMatrices() = default;

    /// \param bones  those of the pose that are used; elsewhere they are known by their places in this list
    /// \param most   that one vertex has
    SkinningMatrices(std::vector<std::int32_t> bones, std::size_t most);

    /// Takes a pose. A bone that it lacks pulls to the origin.
    void set(std::span<BoneTransform const> pose);

    /// For vertices with a weight for each of these bones. It holds until the next call.
    [[nodiscard]] SkinningBlend blend(std::span<std::uint32_t const> bones);

    /// The same for weights that sum to 1: the first bone and, by the weights of the others, how they differ
    /// from it. That is more to do beforehand, and less for every vertex.
    [[nodiscard]] SkinningBlend relativeBlend(std::span<std::uint32_t const> bones);

private:
    [[nodiscard]] bool areAlike(std::span<std::uint32_t const> bones) const;

    std::vector<std::int32_t> bones_;
    std::vector<SkinningMatrix> matrices_;    ///< of bones_
    std::vector<double> sizes_;               ///< the largest number of each
    std::vector<SkinningMatrix> differences_; ///< of one blend
    std::vector<SkinningMatrix const*> blended_;
};
