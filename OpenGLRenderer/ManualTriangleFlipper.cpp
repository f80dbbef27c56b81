#include "OpenGLRenderer/ManualTriangleFlipper.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

namespace {

smart_ptr<SharedSurfaceGeometry> flip(SurfaceGeometryData const& surface)
{
    auto const result = make_smart<SurfaceGeometryData>();
    result->facets = surface.facets;
    for (std::size_t i = 0; i + 1 < result->facets.size(); i += 3)
        std::swap(result->facets[i], result->facets[i + 1]);
    return make_smart<SharedSurfaceGeometry>(result);
}

} // namespace

void ManualTriangleFlipper::addConditions(SceneSurvey::Conditions& conditions) const
{
    conditions.flip = true;
    conditions.flipPosed = conditions.flipPosed || !skipAnimated_;
}

void ManualTriangleFlipper::carryOut(SGRootNode& root, Findings findings)
{
    // What a frame that did not come to its end has left would be flipped a second time.
    if (UnflippedData::any())
        ManualTriangleUnFlipper().carryOut(root, findings);
    root.acceptEnter(this);
    for (SceneSurvey::Finding const& finding : findings) {
        flipped = finding.mirrored;
        finding.node->acceptEnter(this);
    }
    root.acceptLeave(this);
}

void ManualTriangleFlipper::enter(SGRootNode* node)
{
    flipped = false;
    database = getExtraData<TriangleFlipperDatabase>(*node, ExtraDataKeys::triangleFlipperDatabase);
    if (!database) {
        database = make_smart<TriangleFlipperDatabase>();
        node->setExtraData(ExtraDataKeys::triangleFlipperDatabase, database);
    }
    database->beginFrame();
}

void ManualTriangleFlipper::leave(SGRootNode*)
{
    database->endFrame();
    database.reset();
}

void ManualTriangleFlipper::enter(SGTransformNode* node)
{
    flipped = flipped != mirrors(*node);
}

void ManualTriangleFlipper::leave(SGTransformNode* node)
{
    flipped = flipped != mirrors(*node);
}

void ManualTriangleFlipper::enter(SGSurfaceGeometryReferenceNode* node)
{
    if (!flipped || (skipAnimated_ && node->getBoneTransforms()))
        return;
    smart_ptr<SharedSurfaceGeometry> flippedFacets = flippedCopy(node->getFacets()->get());
    // May run out of memory: before the swap.
    node->setExtraData(ExtraDataKeys::unflippedTriangleData, make_smart<UnflippedData>(node->getFacets()));
    node->setFacets(std::move(flippedFacets));
}

smart_ptr<SharedSurfaceGeometry>
ManualTriangleFlipper::flippedCopy(smart_ptr<SurfaceGeometryData const> const& facets)
{
    if (database->contains(facets))
        return database->get(facets);
    smart_ptr<SharedSurfaceGeometry> copy = flip(*facets);
    database->add(facets, copy);
    return copy;
}

void ManualTriangleUnFlipper::enter(SGSurfaceGeometryReferenceNode* node)
{
    auto const saved = getExtraData<UnflippedData>(*node, ExtraDataKeys::unflippedTriangleData);
    if (!saved)
        return;
    node->setFacets(saved->facets);
    node->setExtraData(ExtraDataKeys::unflippedTriangleData, nullptr);
}
