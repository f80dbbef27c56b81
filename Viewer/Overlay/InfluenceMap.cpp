#include "Viewer/Overlay/InfluenceMap.h"

#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "Viewer/Overlay/InfluenceRamp.h"

#include <algorithm>

namespace sgview {

namespace {

/// Null for a part without a skin.
BoneWeightsData const* weightsOf(ModelPart const& part)
{
    auto const* const surface = dynamic_cast<SGSurfaceGeometryReferenceNode const*>(part.drawn.get());
    return surface && surface->getBoneWeights() ? surface->getBoneWeights()->get().get() : nullptr;
}

/// Over all vertices: how much of them each node holds.
std::vector<double> holdOfNodes(ModelInstance const& instance)
{
    std::vector<double> hold(instance.model().nodes.size(), 0.0);
    for (std::size_t i = 0; i < instance.partCount(); ++i) {
        ModelPart const& part = instance.part(i);
        BoneWeightsData const* const weights = weightsOf(part);
        if (!weights)
            continue;
        std::vector<ModelBone> const& bones =
            instance.model().skins[static_cast<std::size_t>(part.skin)].bones;
        for (std::size_t vertex = 0; vertex < weights->size(); ++vertex)
            for (BoneInfluence const& influence : weights->influences(vertex))
                if (Index const node = bones[static_cast<std::size_t>(influence.bone)].node; node != none)
                    hold[static_cast<std::size_t>(node)] += influence.weight;
    }
    return hold;
}

} // namespace

InfluenceMap::InfluenceMap(ModelInstance const& instance)
    : instance_(instance), coordinates_(instance.partCount())
{
    std::vector<ModelNode> const& nodes = instance.model().nodes;
    std::vector<double> const hold = holdOfNodes(instance);
    std::vector<bool> isBone(nodes.size(), false);
    for (ModelSkin const& skin : instance.model().skins)
        for (ModelBone const& bone : skin.bones)
            if (bone.node != none)
                isBone[static_cast<std::size_t>(bone.node)] = true;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (isBone[i])
            bones_.push_back({static_cast<Index>(i), nodes[i].name, hold[i]});
    auto const most = std::ranges::max_element(bones_, {}, &Bone::hold);
    chosen_ = static_cast<std::size_t>(most - bones_.begin());
}

void InfluenceMap::choose(std::size_t bone)
{
    if (bone == chosen_)
        return;
    chosen_ = bone;
    std::ranges::fill(coordinates_, nullptr);
}

std::optional<SGTextureLayer> InfluenceMap::layer(std::size_t part)
{
    BoneWeightsData const* const weights = weightsOf(instance_.part(part));
    if (!weights || bones_.empty())
        return std::nullopt;
    if (!ramp_)
        ramp_ = influenceRamp();
    if (!coordinates_[part])
        coordinates_[part] = makeCoordinates(*weights, instance_.part(part).skin);
    SGTextureLayer layer;
    layer.texture = ramp_;
    layer.coordinates = coordinates_[part];
    layer.clamp = true;
    return layer;
}

smart_ptr<SharedTextureCoords> InfluenceMap::makeCoordinates(BoneWeightsData const& weights, Index skin) const
{
    std::vector<ModelBone> const& bones = instance_.model().skins[static_cast<std::size_t>(skin)].bones;
    auto record = make_smart<TextureCoordsData>();
    record->coordinates.reserve(weights.size());
    for (std::size_t vertex = 0; vertex < weights.size(); ++vertex) {
        double weight = 0.0;
        for (BoneInfluence const& influence : weights.influences(vertex))
            if (bones[static_cast<std::size_t>(influence.bone)].node == bones_[chosen_].node)
                weight += influence.weight;
        record->coordinates.emplace_back(influenceCoordinate(weight), 0.5, 0.0);
    }
    return make_smart<SharedTextureCoords>(std::move(record));
}

} // namespace sgview
