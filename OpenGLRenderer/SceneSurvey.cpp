#include "OpenGLRenderer/SceneSurvey.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "OpenGLRenderer/ManualTriangleFlipper.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "OpenGLRenderer/Skinning.h"
#include "OpenGLRenderer/TextureUploadData.h"
#include "OpenGLRenderer/VBOData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTraverser.h"

#include <algorithm>

namespace {

// What an earlier frame did not come to put back.
bool hasParkedData(SGObject const& node)
{
    return node.findExtraData(ExtraDataKeys::unanimatedData) ||
           node.findExtraData(ExtraDataKeys::uncolorizedTextureData) ||
           node.findExtraData(ExtraDataKeys::unflippedTriangleData);
}

bool lacksFloats(SGObject const& shared, SGExtraDataKey key)
{
    return !findExtraData<FloatData<float>>(shared, key);
}

bool lacksBuffer(SGObject const& shared, SGExtraDataKey key)
{
    return !findExtraData<VBOData>(shared, key);
}

bool isBuffered(SGObject const& node)
{
    return !node.mayHaveExtraData() || !findExtraData<NoVBOTag>(node, ExtraDataKeys::noVBO);
}

} // namespace

void SceneSurvey::take(SGRootNode& root, Conditions const& conditions)
{
    conditions_ = conditions;
    findings_.clear();
    mirrored_ = false;
    treeVersion_ = SGNode::treeVersion();
    SGTraverser::walk(root, *this);
}

bool SceneSurvey::isOfTheSameTree() const
{
    return treeVersion_ == SGNode::treeVersion();
}

void SceneSurvey::enter(SGTransformNode* node)
{
    mirrored_ = mirrored_ != ManualTriangleFlipper::mirrors(*node);
}

void SceneSurvey::leave(SGTransformNode* node)
{
    mirrored_ = mirrored_ != ManualTriangleFlipper::mirrors(*node);
}

void SceneSurvey::enter(SGGeometryNode* node)
{
    if (isToPrepare(*node))
        findings_.push_back({node, mirrored_});
}

void SceneSurvey::enter(SGCurveGeometryReferenceNode* node)
{
    if (isToPrepare(*node))
        findings_.push_back({node, mirrored_});
}

void SceneSurvey::enter(SGSurfaceGeometryReferenceNode* node)
{
    if (isToPrepare(*node))
        findings_.push_back({node, mirrored_});
}

bool SceneSurvey::isToPrepare(SGGeometryNode const& node) const
{
    if (node.mayHaveExtraData() && hasParkedData(node))
        return true;
    return std::ranges::any_of(node.textureLayers,
                               [&](SGTextureLayer const& layer) { return isToPrepare(layer, false, false); });
}

bool SceneSurvey::isToPrepare(SGTextureLayer const& layer, bool drawnFromArrays, bool buffered) const
{
    if (conditions_.tint && layer.colorize)
        return true;
    if (conditions_.textures && !findExtraData<TextureUploadData>(*layer.texture, ExtraDataKeys::texture))
        return true;
    return drawnFromArrays && lacksArray(*layer.coordinates, buffered);
}

bool SceneSurvey::isToPrepare(SGCurveGeometryReferenceNode const& node) const
{
    return isToPrepare(static_cast<SGGeometryNode const&>(node)) ||
           lacksArray(*node.getGeometry(), isBuffered(node));
}

bool SceneSurvey::isToPrepare(SGSurfaceGeometryReferenceNode const& node) const
{
    if (node.mayHaveExtraData() && hasParkedData(node))
        return true;
    if (mirrored_ && conditions_.flip && (conditions_.flipPosed || !node.getBoneTransforms()))
        return true;
    if (conditions_.skin && isSkinned(node))
        return true;
    bool const buffered = isBuffered(node);
    if (lacksArray(*node.getGeometry(), buffered) || lacksArray(*node.getNormals(), buffered))
        return true;
    if (conditions_.buffers && buffered && lacksBuffer(*node.getFacets(), ExtraDataKeys::vbo))
        return true;
    if (SharedBoneWeights const* const weights = node.getBoneWeights().get()) {
        if (conditions_.boneFloats && lacksFloats(*weights, ExtraDataKeys::floatsWeights))
            return true;
        if (conditions_.boneBuffers && buffered && lacksBuffer(*weights, ExtraDataKeys::vboBoneWeights))
            return true;
    }
    return std::ranges::any_of(
        node.textureLayers, [&](SGTextureLayer const& layer) { return isToPrepare(layer, true, buffered); });
}

bool SceneSurvey::lacksArray(SGObject const& shared, bool buffered) const
{
    return (conditions_.floats && lacksFloats(shared, ExtraDataKeys::floats)) ||
           (conditions_.buffers && buffered && lacksBuffer(shared, ExtraDataKeys::vbo));
}
