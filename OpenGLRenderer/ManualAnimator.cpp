#include "OpenGLRenderer/ManualAnimator.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "OpenGLRenderer/SkinnedSurface.h"
#include "OpenGLRenderer/Skinning.h"
#include "OpenGLRenderer/SkinningKernels.h"
#include "OpenGLRenderer/SkinningPlans.h"

namespace {

void putBack(SGSurfaceGeometryReferenceNode& node)
{
    auto const rest = getExtraData<UnanimatedData>(node, ExtraDataKeys::unanimatedData);
    if (!rest)
        return;
    node.setGeometry(std::move(rest->geometry));
    node.setNormals(std::move(rest->normals));
    rest->setParked(false);
    node.setExtraData(ExtraDataKeys::unanimatedData, nullptr);
}

/// Whether the surface is to be moved. It is at rest then, even after a frame that did not come to its end.
bool isReady(SGSurfaceGeometryReferenceNode& node)
{
    if (!isSkinned(node))
        return false;
    putBack(node);
    return true;
}

smart_ptr<SurfaceGeometryData const> skinned(SGSurfaceGeometryReferenceNode const& node)
{
    SkinningPlan const& plan = SkinningPlans::of(node);
    auto result = make_smart<SurfaceGeometryData>();
    if (plan.vertexCount() == 0)
        return result;
    result->vertices.resize(plan.vertexCount());
    result->normals.resize(plan.vertexCount());
    plan.skin(bestSkinningKernel(), poseOf(node), &result->vertices.front().x, &result->normals.front().x);
    return result;
}

void swapIn(SGSurfaceGeometryReferenceNode& node, smart_ptr<UnanimatedData> const& rest,
            smart_ptr<SharedGeometry> geometry, smart_ptr<SharedSurfaceGeometry> normals)
{
    rest->geometry = node.getGeometry();
    rest->normals = node.getNormals();
    // All that may run out of memory comes before the swap.
    node.setExtraData(ExtraDataKeys::unanimatedData, rest);
    rest->setParked(true);
    if (!findExtraData<NoVBOTag>(node, ExtraDataKeys::noVBO))
        node.setExtraData(ExtraDataKeys::noVBO, make_smart<NoVBOTag>());
    node.setGeometry(std::move(geometry));
    node.setNormals(std::move(normals));
}

/// What the animator does in a frame, where the arrays that OpenGL takes are all that is asked of the
/// deformed copy.
class FrameAnimator : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override
    {
        if (!isReady(*node))
            return;
        smart_ptr<SkinnedSurface> const surface = SkinnedSurface::of(*node);
        surface->fill(*node);
        swapIn(*node, surface, surface->deformedGeometry(), surface->deformedNormals());
    }
};

} // namespace

void ManualAnimator::carryOut(SGRootNode& root, Findings findings)
{
    FrameAnimator animator;
    show(animator, root, findings);
}

void ManualAnimator::enter(SGSurfaceGeometryReferenceNode* node)
{
    if (!isReady(*node))
        return;
    smart_ptr<SurfaceGeometryData const> const deformed = skinned(*node);
    // New wrappers: no cache has seen them, so all that hangs on a wrapper is made for this frame.
    swapIn(*node, make_smart<UnanimatedData>(), make_smart<SharedGeometry>(deformed),
           make_smart<SharedSurfaceGeometry>(deformed));
}

void ManualUnAnimator::enter(SGSurfaceGeometryReferenceNode* node)
{
    putBack(*node);
}
