#pragma once

#include "Viewer/Import/Model.h"

#include <cstddef>
#include <vector>

namespace sgview {

/// Collects a file's bone influences for one surface and brings them into the shape that a ModelSurface
/// keeps: the four strongest of each vertex, strongest first, summing to 1.
class SkinWeights {
public:
    explicit SkinWeights(std::size_t vertices) : influences_(vertices) {}

    /// A weight that is not above 0, or not finite, counts as none. Two of one bone add up.
    void add(std::size_t vertex, Index bone, double weight);

    /// \return whether some vertex has no influence, so that `store` will need the bone for those
    [[nodiscard]] bool hasUnbound() const;

    /// Sets the surface's influence lists and counts.
    /// \param boneOfUnbound  the bone for vertices that the file binds to none
    void store(ModelSurface& surface, Index boneOfUnbound) const;

private:
    std::vector<std::vector<ModelInfluence>> influences_;
};

} // namespace sgview
