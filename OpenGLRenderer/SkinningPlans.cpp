#include "OpenGLRenderer/SkinningPlans.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"

namespace {

// A combination that is drawn no more need not be kept for as long as its weights.
constexpr std::size_t mostPlans = 8;

} // namespace

SkinningPlans::Source::Source(SGSurfaceGeometryReferenceNode const& node)
    : geometry(node.getGeometry()),
      normals(node.getNormals()),
      vertexData(node.getGeometry()->get()),
      normalData(node.getNormals()->get()),
      weights(node.getBoneWeights()->get())
{
}

bool SkinningPlans::Source::isOf(SGSurfaceGeometryReferenceNode const& node) const
{
    return vertexData == node.getGeometry()->get() && normalData == node.getNormals()->get() &&
           weights == node.getBoneWeights()->get();
}

bool SkinningPlans::Source::isInUse() const
{
    return !geometry.expired() && geometry.lock()->get() == vertexData && !normals.expired() &&
           normals.lock()->get() == normalData;
}

SkinningPlan const& SkinningPlans::of(SGSurfaceGeometryReferenceNode const& node)
{
    SharedBoneWeights& weights = *node.getBoneWeights();
    auto* plans = findExtraData<SkinningPlans>(weights, ExtraDataKeys::skinningPlans);
    if (!plans) {
        auto made = make_smart<SkinningPlans>();
        plans = made.get();
        weights.setExtraData(ExtraDataKeys::skinningPlans, std::move(made));
    }
    return plans->planOf(node);
}

SkinningPlan const& SkinningPlans::planOf(SGSurfaceGeometryReferenceNode const& node)
{
    for (Entry const& entry : entries_)
        if (entry.source.isOf(node))
            return *entry.plan;
    std::erase_if(entries_, [&](Entry const& entry) {
        return !entry.source.isInUse() || entry.source.weights != node.getBoneWeights()->get();
    });
    if (entries_.size() == mostPlans)
        entries_.erase(entries_.begin());
    auto plan = std::make_unique<SkinningPlan const>(node.getGeometry()->get()->vertices,
                                                     node.getNormals()->get()->normals,
                                                     *node.getBoneWeights()->get());
    entries_.push_back({Source(node), std::move(plan)});
    return *entries_.back().plan;
}
