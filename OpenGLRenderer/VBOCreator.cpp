#include "OpenGLRenderer/VBOCreator.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "OpenGLRenderer/VBOData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

namespace {

bool isKeptOffBuffers(SGObject const& node)
{
    return findExtraData<NoVBOTag>(node, ExtraDataKeys::noVBO) != nullptr;
}

template <typename T>
void generateVBO(GLuint* name, std::vector<T> const& data, GLenum target)
{
    static_assert(sizeof(T) == 4);
    glGenBuffersARB(1, name);
    glBindBufferARB(target, *name);
    glBufferDataARB(target, static_cast<GLsizeiptrARB>(sizeof(T) * data.size()),
                    data.empty() ? nullptr : data.data(), GL_DYNAMIC_DRAW_ARB);
}

template <typename T>
void addBuffer(SGObject& object, SGExtraDataKey key, std::vector<T> const& data, GLenum target)
{
    auto const record = make_smart<VBOData>();
    object.setExtraData(key, record);
    generateVBO(&record->name, data, target);
}

bool hasBuffer(SGObject const& object, SGExtraDataKey key)
{
    return findExtraData<VBOData>(object, key) != nullptr;
}

void addFloatsBuffer(SGObject& object)
{
    if (hasBuffer(object, ExtraDataKeys::vbo))
        return;
    auto const* const floats = findExtraData<FloatData<float>>(object, ExtraDataKeys::floats);
    addBuffer(object, ExtraDataKeys::vbo, floats->values, GL_ARRAY_BUFFER_ARB);
}

} // namespace

void VBOCreator::addConditions(SceneSurvey::Conditions& conditions) const
{
    conditions.buffers = true;
    conditions.boneBuffers = conditions.boneBuffers || useProgramSkinning_;
}

void VBOCreator::leave(SGRootNode*)
{
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
}

void VBOCreator::enter(SGCurveGeometryReferenceNode* node)
{
    if (!isKeptOffBuffers(*node))
        addTo(node->getGeometry());
}

void VBOCreator::enter(SGSurfaceGeometryReferenceNode* node)
{
    if (isKeptOffBuffers(*node))
        return;
    if (useProgramSkinning_ && node->getBoneWeights())
        addTo(node->getBoneWeights());
    addTo(node->getGeometry());
    addToNormals(node->getNormals());
    addToFacets(node->getFacets());
    for (SGTextureLayer const& layer : node->textureLayers)
        addTo(layer.coordinates);
}

void VBOCreator::addTo(smart_ptr<SharedGeometry> const& shared)
{
    addFloatsBuffer(*shared);
}

void VBOCreator::addTo(smart_ptr<SharedTextureCoords> const& shared)
{
    addFloatsBuffer(*shared);
}

void VBOCreator::addTo(smart_ptr<SharedBoneWeights> const& shared)
{
    if (hasBuffer(*shared, ExtraDataKeys::vboBoneWeights))
        return;
    auto const* const weights = findExtraData<FloatData<float>>(*shared, ExtraDataKeys::floatsWeights);
    auto const* const indices = findExtraData<FloatData<float>>(*shared, ExtraDataKeys::floatsIndices);
    addBuffer(*shared, ExtraDataKeys::vboBoneWeights, weights->values, GL_ARRAY_BUFFER_ARB);
    addBuffer(*shared, ExtraDataKeys::vboBoneIndices, indices->values, GL_ARRAY_BUFFER_ARB);
}

void VBOCreator::addToNormals(smart_ptr<SharedSurfaceGeometry> const& shared)
{
    addFloatsBuffer(*shared);
}

void VBOCreator::addToFacets(smart_ptr<SharedSurfaceGeometry> const& shared)
{
    if (!hasBuffer(*shared, ExtraDataKeys::vbo))
        addBuffer(*shared, ExtraDataKeys::vbo, shared->get()->facets, GL_ELEMENT_ARRAY_BUFFER_ARB);
}
