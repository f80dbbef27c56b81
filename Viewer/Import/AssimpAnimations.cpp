#include "Viewer/Import/AssimpAnimations.h"

#include "Viewer/Import/Tracks.h"

#include <assimp/anim.h>
#include <assimp/scene.h>

#include <set>
#include <span>

namespace sgview {

namespace {

constexpr double usualTicksPerSecond = 25.0;

Vector3 valueOf(aiVectorKey const& key)
{
    return {static_cast<double>(key.mValue.x), static_cast<double>(key.mValue.y),
            static_cast<double>(key.mValue.z)};
}

Quaternion valueOf(aiQuatKey const& key)
{
    return {static_cast<double>(key.mValue.x), static_cast<double>(key.mValue.y),
            static_cast<double>(key.mValue.z), static_cast<double>(key.mValue.w)};
}

class Reader {
public:
    Reader(std::map<std::string, Index> const& nodesByName, Warnings& warnings)
        : nodesByName_(nodesByName), warnings_(warnings)
    {
    }

    ModelAnimation read(aiAnimation const& source, std::string name)
    {
        double const rate = source.mTicksPerSecond > 0.0 ? source.mTicksPerSecond : usualTicksPerSecond;
        ModelAnimation animation;
        animation.name = std::move(name);
        double const start = std::min(0.0, firstTime(source));
        std::set<Index> seen;
        for (aiNodeAnim const* const channel : std::span(source.mChannels, source.mNumChannels)) {
            std::string const nodeName = channel->mNodeName.C_Str();
            auto const node = nodesByName_.find(nodeName);
            if (node == nodesByName_.end() || !seen.insert(node->second).second) {
                warnings_.add("animation '" + animation.name + "': channel of '" + nodeName +
                              "' has no node of its own; left out");
                continue;
            }
            ModelChannel result;
            result.node = node->second;
            std::string const what = "animation '" + animation.name + "' of '" + nodeName + "'";
            fill(result.translation, std::span(channel->mPositionKeys, channel->mNumPositionKeys), start,
                 rate, what);
            fill(result.rotation, std::span(channel->mRotationKeys, channel->mNumRotationKeys), start, rate,
                 what);
            fill(result.scale, std::span(channel->mScalingKeys, channel->mNumScalingKeys), start, rate, what);
            if (!result.translation.times.empty() || !result.rotation.times.empty() ||
                !result.scale.times.empty())
                animation.channels.push_back(std::move(result));
        }
        if (source.mNumMorphMeshChannels > 0 || source.mNumMeshChannels > 0)
            warnings_.add("animation '" + animation.name + "': morphing is not animated");
        animation.length = lengthOf(animation);
        return animation;
    }

private:
    static double firstTime(aiAnimation const& source)
    {
        double first = 0.0;
        auto const look = [&](auto const& keys) {
            for (auto const& key : keys)
                if (std::isfinite(key.mTime))
                    first = std::min(first, key.mTime);
        };
        for (aiNodeAnim const* const channel : std::span(source.mChannels, source.mNumChannels)) {
            look(std::span(channel->mPositionKeys, channel->mNumPositionKeys));
            look(std::span(channel->mRotationKeys, channel->mNumRotationKeys));
            look(std::span(channel->mScalingKeys, channel->mNumScalingKeys));
        }
        return first;
    }

    template <typename T, typename Keys>
    void fill(ModelTrack<T>& track, Keys const& keys, double start, double rate, std::string const& what)
    {
        for (auto const& key : keys) {
            track.times.push_back((key.mTime - start) / rate);
            track.values.push_back(valueOf(key));
        }
        if (!keys.empty() && !tidyTrack(track))
            warnings_.add(what + ": keys that are not finite; left out");
    }

    std::map<std::string, Index> const& nodesByName_;
    Warnings& warnings_;
};

} // namespace

void readAssimpAnimations(aiScene const& scene, std::map<std::string, Index> const& nodesByName, Model& model,
                          Warnings& warnings)
{
    Reader reader(nodesByName, warnings);
    for (unsigned int i = 0; i < scene.mNumAnimations; ++i) {
        aiAnimation const& source = *scene.mAnimations[i];
        ModelAnimation animation = reader.read(
            source, source.mName.length > 0 ? source.mName.C_Str() : "animation " + std::to_string(i));
        if (animation.channels.empty())
            continue;
        for (ModelChannel const& channel : animation.channels)
            model.nodes[static_cast<std::size_t>(channel.node)].hasMatrix = false;
        model.animations.push_back(std::move(animation));
    }
}

} // namespace sgview
