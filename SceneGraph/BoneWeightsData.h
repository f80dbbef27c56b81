#pragma once

#include "Utilities/smart_ptr.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// A bone's hold on a vertex.
struct BoneInfluence {
    std::int32_t bone = 0; ///< index into the pose
    double weight = 0.0;

    constexpr bool operator==(BoneInfluence const&) const = default;
};

/// Which bones move each vertex of a surface. Weights are used as given: they should sum to 1 a vertex.
class BoneWeightsData : public smart_base {
public:
    BoneWeightsData() = default;
    ~BoneWeightsData() override;

    /// Appends the influences of the next vertex; none leaves the vertex at rest.
    void addVertex(std::span<BoneInfluence const> influences);

    /// How many vertices have a list.
    [[nodiscard]] std::size_t size() const { return offsets_.size() - 1; }

    /// The influences of one vertex, in the order given; `vertex` is not checked.
    [[nodiscard]] std::span<BoneInfluence const> influences(std::size_t vertex) const
    {
        return {influences_.data() + offsets_[vertex], offsets_[vertex + 1] - offsets_[vertex]};
    }

private:
    std::vector<std::uint32_t> offsets_{0}; ///< where each vertex's list starts, and the end of the last
    std::vector<BoneInfluence> influences_;
};
