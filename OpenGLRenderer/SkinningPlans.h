#pragma once

#include "OpenGLRenderer/SkinningPlan.h"
#include "SceneGraph/SGExtraData.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <array>
#include <memory>
#include <vector>

/// The plans of the surfaces that share bone weights, on which this hangs: one for each combination of
/// geometry and normals that they move.
class SkinningPlans : public SGExtraData {
public:
    /// The plan of a surface that is at rest and skinned; made where there is none, or one of other data.
    [[nodiscard]] static SkinningPlan const& of(SGSurfaceGeometryReferenceNode const& node);

private:
    /// What a plan was made of. The wrappers are told by their addresses for as long as they live. New data
    /// comes in a new wrapper; the addresses of the data tell apart those who put it into the old one all the
    /// same.
    struct Source {
        explicit Source(SGSurfaceGeometryReferenceNode const& node);

        /// Whether a plan made of this is the node's; false too once a wrapper is gone.
        [[nodiscard]] bool isOf(SGSurfaceGeometryReferenceNode const& node) const;
        [[nodiscard]] bool isGone() const { return geometry.expired() || normals.expired(); }

        weak_ptr<SharedGeometry> geometry;
        weak_ptr<SharedSurfaceGeometry> normals;
        std::array<void const*, 5> addresses;
    };

    struct Entry {
        Source source;
        std::unique_ptr<SkinningPlan const> plan;
    };

    [[nodiscard]] SkinningPlan const& planOf(SGSurfaceGeometryReferenceNode const& node);

    std::vector<Entry> entries_;
};
