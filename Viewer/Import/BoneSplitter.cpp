#include "Viewer/Import/BoneSplitter.h"

#include "Viewer/Import/BonePartition.h"
#include "Viewer/Import/ModelCheck.h"
#include "Viewer/Import/Normals.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <string>
#include <utility>

namespace sgview {

namespace {

/// The triangles of one part with the vertices they use.
ModelSurface partOf(ModelSurface const& whole, std::vector<std::size_t> const& triangles)
{
    std::map<std::int32_t, std::int32_t> successors;
    std::vector<std::int32_t> sources;
    ModelSurface part = whole;
    part.facets.clear();
    for (std::size_t const triangle : triangles) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            std::int32_t const vertex = whole.facets[3 * triangle + corner];
            auto const [entry, isNew] =
                successors.try_emplace(vertex, static_cast<std::int32_t>(sources.size()));
            if (isNew)
                sources.push_back(vertex);
            part.facets.push_back(entry->second);
        }
    }
    takeVertices(part, sources);
    return part;
}

class Splitter {
public:
    explicit Splitter(Model& model) : model_(model), skins_(std::exchange(model.skins, {})) {}

    void split()
    {
        std::vector<std::vector<Index>> successors;
        for (ModelSurface& surface : std::exchange(model_.surfaces, {})) {
            std::size_t const first = model_.surfaces.size();
            replace(std::move(surface));
            successors.emplace_back(model_.surfaces.size() - first);
            std::iota(successors.back().begin(), successors.back().end(), static_cast<Index>(first));
        }
        for (ModelNode& node : model_.nodes) {
            for (Index const surface : std::exchange(node.surfaces, {})) {
                std::vector<Index> const& parts = successors[static_cast<std::size_t>(surface)];
                node.surfaces.insert(node.surfaces.end(), parts.begin(), parts.end());
            }
        }
    }

private:
    void replace(ModelSurface surface)
    {
        if (surface.skin != none && bonesOf(surface).size() > mostBonesOfSkin)
            addParts(surface);
        else
            add(std::move(surface));
    }

    void addParts(ModelSurface const& surface)
    {
        bool const blending = model_.materials[static_cast<std::size_t>(surface.material)].blending;
        BonePartition const parts = blending ? partitionByBonesInOrder(surface, mostBonesOfSkin)
                                             : partitionByBones(surface, mostBonesOfSkin);
        model_.splits.push_back(
            {surface.name, static_cast<Index>(model_.surfaces.size()), static_cast<Index>(parts.size())});
        for (std::size_t i = 0; i < parts.size(); ++i) {
            ModelSurface part = partOf(surface, parts[i]);
            part.name += " (" + std::to_string(i + 1) + " of " + std::to_string(parts.size()) + ")";
            if (i > 0)
                part.droppedInfluences = 0; // they were dropped once
            add(std::move(part));
        }
    }

    void add(ModelSurface surface)
    {
        if (surface.skin != none)
            rebind(surface);
        model_.surfaces.push_back(std::move(surface));
    }

    /// From a skin as it was to one that is small enough.
    void rebind(ModelSurface& surface)
    {
        std::vector<ModelBone> const& all = skins_[static_cast<std::size_t>(surface.skin)].bones;
        bool const isSmall = all.size() <= mostBonesOfSkin;
        std::vector<Index> const used = isSmall ? std::vector<Index>() : bonesOf(surface);
        surface.skin = skinOf(surface.skin, used);
        if (!isSmall)
            for (ModelInfluence& influence : surface.influences)
                influence.bone =
                    static_cast<Index>(std::ranges::lower_bound(used, influence.bone) - used.begin());
    }

    /// \param used  the bones to take; all of them if empty
    Index skinOf(Index former, std::vector<Index> const& used)
    {
        auto const [entry, isNew] =
            known_.try_emplace({former, used}, static_cast<Index>(model_.skins.size()));
        if (!isNew)
            return entry->second;
        ModelSkin const& source = skins_[static_cast<std::size_t>(former)];
        ModelSkin skin{source.name, used.empty() ? source.bones : std::vector<ModelBone>()};
        for (Index const bone : used)
            skin.bones.push_back(source.bones[static_cast<std::size_t>(bone)]);
        model_.skins.push_back(std::move(skin));
        return entry->second;
    }

    Model& model_;
    std::vector<ModelSkin> skins_; ///< as they were
    std::map<std::pair<Index, std::vector<Index>>, Index> known_;
};

} // namespace

void splitByBones(Model& model)
{
    Splitter(model).split();
}

} // namespace sgview
