#include "OpenGLRenderer/ConverterToFloats.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <algorithm>

namespace {

using Floats = FloatData<float>;

// What the skinning programs take.
constexpr std::size_t influencesPerVertex = 4;

template <typename Vector>
smart_ptr<Floats> xyzOf(std::vector<Vector> const& vectors)
{
    auto floats = make_smart<Floats>();
    floats->values.resize(3 * vectors.size());
    float* value = floats->values.data();
    for (Vector3 const& vector : vectors) {
        *value++ = static_cast<float>(vector.x);
        *value++ = static_cast<float>(vector.y);
        *value++ = static_cast<float>(vector.z);
    }
    return floats;
}

smart_ptr<Floats> uvOf(std::vector<Vector3> const& coordinates)
{
    auto floats = make_smart<Floats>();
    floats->values.resize(2 * coordinates.size());
    float* value = floats->values.data();
    for (Vector3 const& coordinate : coordinates) {
        *value++ = static_cast<float>(coordinate.x);
        *value++ = static_cast<float>(coordinate.y);
    }
    return floats;
}

} // namespace

void ConverterToFloats::addConditions(SceneSurvey::Conditions& conditions) const
{
    conditions.floats = true;
    conditions.boneFloats = conditions.boneFloats || useProgramSkinning_;
}

void ConverterToFloats::enter(SGCurveGeometryReferenceNode* node)
{
    addTo(node->getGeometry());
}

void ConverterToFloats::enter(SGSurfaceGeometryReferenceNode* node)
{
    if (useProgramSkinning_ && node->getBoneWeights())
        addTo(node->getBoneWeights());
    addTo(node->getGeometry());
    addTo(node->getNormals());
    for (SGTextureLayer const& layer : node->textureLayers)
        addTo(layer.coordinates);
}

void ConverterToFloats::addTo(smart_ptr<SharedGeometry> const& shared)
{
    if (!findExtraData<Floats>(*shared, ExtraDataKeys::floats))
        shared->setExtraData(ExtraDataKeys::floats, xyzOf(shared->get()->vertices));
}

void ConverterToFloats::addTo(smart_ptr<SharedSurfaceGeometry> const& shared)
{
    if (!findExtraData<Floats>(*shared, ExtraDataKeys::floats))
        shared->setExtraData(ExtraDataKeys::floats, xyzOf(shared->get()->normals));
}

void ConverterToFloats::addTo(smart_ptr<SharedTextureCoords> const& shared)
{
    if (!findExtraData<Floats>(*shared, ExtraDataKeys::floats))
        shared->setExtraData(ExtraDataKeys::floats, uvOf(shared->get()->coordinates));
}

void ConverterToFloats::addTo(smart_ptr<SharedBoneWeights> const& shared)
{
    if (findExtraData<Floats>(*shared, ExtraDataKeys::floatsWeights))
        return;
    BoneWeightsData const& data = *shared->get();
    auto const weights = make_smart<Floats>();
    auto const indices = make_smart<Floats>();
    weights->values.resize(influencesPerVertex * data.size());
    indices->values.resize(influencesPerVertex * data.size());
    for (std::size_t vertex = 0; vertex < data.size(); ++vertex) {
        std::span<BoneInfluence const> const influences = data.influences(vertex);
        std::size_t const taken = std::min(influences.size(), influencesPerVertex);
        for (std::size_t slot = 0; slot < taken; ++slot) {
            weights->values[influencesPerVertex * vertex + slot] =
                static_cast<float>(influences[slot].weight);
            indices->values[influencesPerVertex * vertex + slot] = static_cast<float>(influences[slot].bone);
        }
    }
    shared->setExtraData(ExtraDataKeys::floatsIndices, indices);
    shared->setExtraData(ExtraDataKeys::floatsWeights, weights); // last: what has them has both
}
