#include "Viewer/Import/BonePartition.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace sgview {

namespace {

using Bones = std::vector<Index>; // ascending, no two the same

void sortUnique(Bones& bones)
{
    std::ranges::sort(bones);
    bones.erase(std::unique(bones.begin(), bones.end()), bones.end());
}

Bones bonesOfTriangle(ModelSurface const& surface, std::size_t triangle)
{
    Bones bones;
    for (std::size_t corner = 0; corner < 3; ++corner) {
        auto const vertex = static_cast<std::size_t>(surface.facets[3 * triangle + corner]);
        for (auto i = static_cast<std::size_t>(surface.influenceOffsets[vertex]);
             i < static_cast<std::size_t>(surface.influenceOffsets[vertex + 1]); ++i)
            bones.push_back(surface.influences[i].bone);
    }
    sortUnique(bones);
    return bones;
}

/// Triangles that hang on the same bones.
struct Group {
    Bones bones;
    std::vector<std::size_t> triangles;
};

/// In the order of their first triangles.
std::vector<Group> groupsOf(ModelSurface const& surface)
{
    std::map<Bones, std::size_t> known;
    std::vector<Group> groups;
    for (std::size_t triangle = 0; 3 * triangle < surface.facets.size(); ++triangle) {
        Bones bones = bonesOfTriangle(surface, triangle);
        auto const [entry, isNew] = known.try_emplace(bones, groups.size());
        if (isNew)
            groups.push_back({std::move(bones), {}});
        groups[entry->second].triangles.push_back(triangle);
    }
    return groups;
}

/// Grows one part after the other from groups.
class Grower {
public:
    Grower(std::vector<Group> groups, std::size_t mostBones)
        : groups_(std::move(groups)), mostBones_(mostBones), done_(groups_.size(), false)
    {
        for (std::size_t g = 0; g < groups_.size(); ++g) {
            missing_.push_back(groups_[g].bones.size());
            for (Index const bone : groups_[g].bones)
                groupsOfBone_[bone].push_back(g);
        }
    }

    BonePartition partition()
    {
        BonePartition parts;
        while (hasLeft())
            parts.push_back(growPart());
        return parts;
    }

private:
    bool hasLeft()
    {
        while (firstLeft_ < groups_.size() && done_[firstLeft_])
            ++firstLeft_;
        return firstLeft_ < groups_.size();
    }

    std::vector<std::size_t> growPart()
    {
        std::set<Index> bones;
        std::vector<std::size_t> triangles;
        while (hasLeft()) {
            // Where nothing is left that touches the part, another piece of the surface may share it.
            std::size_t const next = neighbours_.empty() ? firstLeft_ : neighbours_.begin()->second;
            if (bones.size() + missing_[next] > mostBones_)
                break;
            for (Index const bone : groups_[next].bones)
                if (bones.insert(bone).second)
                    approach(bone);
            neighbours_.erase({missing_[next], next});
            done_[next] = true;
            triangles.insert(triangles.end(), groups_[next].triangles.begin(), groups_[next].triangles.end());
        }
        for (auto const& [missing, group] : std::exchange(neighbours_, {}))
            missing_[group] = groups_[group].bones.size();
        std::ranges::sort(triangles);
        return triangles;
    }

    /// The part has one bone more.
    void approach(Index bone)
    {
        for (std::size_t const group : groupsOfBone_[bone]) {
            if (done_[group])
                continue;
            neighbours_.erase({missing_[group], group});
            neighbours_.emplace(--missing_[group], group);
        }
    }

    std::vector<Group> groups_;
    std::size_t mostBones_;
    std::vector<bool> done_;
    std::size_t firstLeft_ = 0;
    std::vector<std::size_t> missing_; ///< bones that the part needs yet to hold a group
    std::map<Index, std::vector<std::size_t>> groupsOfBone_;
    std::set<std::pair<std::size_t, std::size_t>> neighbours_; ///< groups that share bones with the part, by
                                                               ///< what they miss
};

} // namespace

BonePartition partitionByBones(ModelSurface const& surface, std::size_t mostBones)
{
    return Grower(groupsOf(surface), mostBones).partition();
}

BonePartition partitionByBonesInOrder(ModelSurface const& surface, std::size_t mostBones)
{
    BonePartition parts;
    Bones bones;
    for (std::size_t triangle = 0; 3 * triangle < surface.facets.size(); ++triangle) {
        Bones const wanted = bonesOfTriangle(surface, triangle);
        Bones all;
        std::ranges::set_union(bones, wanted, std::back_inserter(all));
        bool const fits = !parts.empty() && all.size() <= mostBones;
        if (!fits)
            parts.emplace_back();
        bones = fits ? all : wanted;
        parts.back().push_back(triangle);
    }
    return parts;
}

std::vector<Index> bonesOf(ModelSurface const& surface)
{
    Bones bones;
    bones.reserve(surface.influences.size());
    for (ModelInfluence const& influence : surface.influences)
        bones.push_back(influence.bone);
    sortUnique(bones);
    return bones;
}

} // namespace sgview
