#include "Viewer/Import/SkinWeights.h"

#include <algorithm>
#include <cmath>

namespace sgview {

namespace {

constexpr std::size_t mostInfluences = 4;

} // namespace

void SkinWeights::add(std::size_t vertex, Index bone, double weight)
{
    if (!(weight > 0.0) || !std::isfinite(weight))
        return;
    std::vector<ModelInfluence>& list = influences_[vertex];
    auto const same = std::ranges::find(list, bone, &ModelInfluence::bone);
    if (same == list.end())
        list.push_back({bone, weight});
    else
        same->weight += weight;
}

bool SkinWeights::hasUnbound() const
{
    return std::ranges::any_of(influences_, &std::vector<ModelInfluence>::empty);
}

void SkinWeights::store(ModelSurface& surface, Index boneOfUnbound) const
{
    surface.influences.clear();
    surface.influenceOffsets.assign(1, 0);
    for (std::vector<ModelInfluence> list : influences_) {
        auto const count = list.size();
        surface.mostInfluencesInFile =
            std::max(surface.mostInfluencesInFile, static_cast<std::int32_t>(count));
        std::ranges::stable_sort(list, std::greater(), &ModelInfluence::weight);
        if (count > mostInfluences) {
            surface.droppedInfluences += static_cast<std::int64_t>(count - mostInfluences);
            list.resize(mostInfluences);
        }
        if (list.empty())
            list.push_back({boneOfUnbound, 1.0});
        // By the largest first, so that neither a huge nor a tiny sum leaves the range of doubles.
        double const largest = list.front().weight;
        double sum = 0.0;
        for (ModelInfluence const& influence : list)
            sum += influence.weight / largest;
        for (ModelInfluence& influence : list)
            influence.weight = influence.weight / largest / sum;
        surface.influences.insert(surface.influences.end(), list.begin(), list.end());
        surface.influenceOffsets.push_back(static_cast<std::int32_t>(surface.influences.size()));
    }
}

} // namespace sgview
