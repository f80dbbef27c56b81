#pragma once

#include "OpenGLRenderer/SkinningPlan.h"
#include "SceneGraph/SGExtraData.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <memory>
#include <vector>

/// The plans of the surfaces that share bone weights, on which this hangs: one for each combination of
/// geometry and normals that they move.
class SkinningPlans : public SGExtraData {
public:
    /// The plan of a surface that is at rest and skinned; made where there is none, or one of other data.
    [[nodiscard]] static SkinningPlan const& of(SGSurfaceGeometryReferenceNode const& node);

private:
    /// What a plan was made of. New data comes in new wrappers, or in the old ones all the same: it is held,
    /// so that no other can take its place in memory.
    struct Source {
        explicit Source(SGSurfaceGeometryReferenceNode const& node);

        /// Whether a plan made of this is the node's.
        [[nodiscard]] bool isOf(SGSurfaceGeometryReferenceNode const& node) const;

        /// Whether the wrappers of the geometry and the normals are there, and still hold this.
        [[nodiscard]] bool isInUse() const;

        weak_ptr<SharedGeometry> geometry;
        weak_ptr<SharedSurfaceGeometry> normals;
        smart_ptr<GeometryData const> vertexData;
        smart_ptr<SurfaceGeometryData const> normalData;
        smart_ptr<BoneWeightsData const> weights;
    };

    struct Entry {
        Source source;
        std::unique_ptr<SkinningPlan const> plan;
    };

    [[nodiscard]] SkinningPlan const& planOf(SGSurfaceGeometryReferenceNode const& node);

    std::vector<Entry> entries_;
};
