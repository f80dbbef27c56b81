#include "OpenGLRenderer/SkinnedSurface.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "OpenGLRenderer/Skinning.h"
#include "OpenGLRenderer/SkinningKernels.h"
#include "OpenGLRenderer/SkinningPlans.h"

#include <utility>

namespace {

/// Where to write the three numbers of each vertex; the wrapper keeps the array.
float* arrayOn(SGObject& wrapper, std::size_t vertices)
{
    auto* floats = findExtraData<FloatData<float>>(wrapper, ExtraDataKeys::floats);
    if (!floats) {
        auto made = make_smart<FloatData<float>>();
        floats = made.get();
        wrapper.setExtraData(ExtraDataKeys::floats, std::move(made));
    }
    floats->values.resize(3 * vertices);
    return floats->values.data();
}

} // namespace

SkinnedSurface::SkinnedSurface()
{
    setParked(false);
}

smart_ptr<SkinnedSurface> SkinnedSurface::of(SGSurfaceGeometryReferenceNode& node)
{
    auto surface = getExtraData<SkinnedSurface>(node, ExtraDataKeys::skinnedSurface);
    if (!surface) {
        surface = make_smart<SkinnedSurface>();
        node.setExtraData(ExtraDataKeys::skinnedSurface, surface);
    }
    if (!surface->deformedGeometry_ || surface->deformedGeometry_->referenceCount() > 1 ||
        surface->deformedNormals_->referenceCount() > 1)
        surface->renew();
    return surface;
}

void SkinnedSurface::renew()
{
    // The float arrays stand for it: nothing else of it is drawn.
    auto const data = make_smart<SurfaceGeometryData>();
    auto positions = make_smart<SharedGeometry>(data);
    deformedNormals_ = make_smart<SharedSurfaceGeometry>(data);
    deformedGeometry_ = std::move(positions); // last: where it is, both are
}

void SkinnedSurface::fill(SGSurfaceGeometryReferenceNode const& node)
{
    SkinningPlan const& plan = SkinningPlans::of(node);
    float* const positions = arrayOn(*deformedGeometry_, plan.vertexCount());
    float* const directions = arrayOn(*deformedNormals_, plan.vertexCount());
    plan.skin(bestSkinningKernel(), poseOf(node), positions, directions);
}
