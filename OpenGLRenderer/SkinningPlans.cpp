#include "OpenGLRenderer/SkinningPlans.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"

namespace {

// A combination that is drawn no more need not be kept for as long as its weights.
constexpr std::size_t mostPlans = 8;

std::array<void const*, 5> addressesOf(SGSurfaceGeometryReferenceNode const& node)
{
    SharedGeometry const& geometry = *node.getGeometry();
    SharedSurfaceGeometry const& normals = *node.getNormals();
    return {node.getBoneWeights()->get().get(), &geometry, geometry.get().get(), &normals,
            normals.get().get()};
}

} // namespace

SkinningPlans::Source::Source(SGSurfaceGeometryReferenceNode const& node)
    : geometry(node.getGeometry()), normals(node.getNormals()), addresses(addressesOf(node))
{
}

bool SkinningPlans::Source::isOf(SGSurfaceGeometryReferenceNode const& node) const
{
    return !isGone() && addresses == addressesOf(node);
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
    // A wrapper that holds other data than it did has no use for the plan of the old.
    std::erase_if(entries_, [&](Entry const& entry) {
        return entry.source.isGone() || entry.source.addresses[0] != node.getBoneWeights()->get().get();
    });
    if (entries_.size() == mostPlans)
        entries_.erase(entries_.begin());
    auto plan = std::make_unique<SkinningPlan const>(node.getGeometry()->get()->vertices,
                                                     node.getNormals()->get()->normals,
                                                     *node.getBoneWeights()->get());
    entries_.push_back({Source(node), std::move(plan)});
    return *entries_.back().plan;
}
