#include "Viewer/Import/ModelCounts.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace sgview {

namespace {

std::size_t countBones(Model const& model)
{
    std::set<std::pair<Index, Index>> used; // skin and bone
    for (ModelSurface const& surface : model.surfaces)
        for (ModelInfluence const& influence : surface.influences)
            used.emplace(surface.skin, influence.bone);
    std::set<std::pair<Index, std::array<double, 16>>> bones;
    for (auto const& [skin, number] : used) {
        ModelBone const& bone =
            model.skins[static_cast<std::size_t>(skin)].bones[static_cast<std::size_t>(number)];
        std::array<double, 16> elements{};
        std::copy_n(bone.inverseBind.data(), elements.size(), elements.begin());
        bones.emplace(bone.node, elements);
    }
    return bones.size();
}

} // namespace

ModelCounts countsOf(Model const& model)
{
    ModelCounts counts;
    counts.nodes = model.nodes.size();
    counts.surfaces = model.surfaces.size();
    counts.curves = model.curves.size();
    counts.textures = model.images.size();
    for (ModelSurface const& surface : model.surfaces) {
        counts.vertices += surface.positions.size();
        counts.triangles += surface.facets.size() / 3;
    }
    for (ModelCurve const& curve : model.curves)
        counts.vertices += curve.positions.size();
    counts.bones = countBones(model);
    return counts;
}

} // namespace sgview
