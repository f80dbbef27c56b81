#include "SceneGraph/BoneWeightsData.h"

BoneWeightsData::~BoneWeightsData() = default;

void BoneWeightsData::addVertex(std::span<BoneInfluence const> influences)
{
    influences_.insert(influences_.end(), influences.begin(), influences.end());
    offsets_.push_back(static_cast<std::uint32_t>(influences_.size()));
}
