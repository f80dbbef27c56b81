#include "Viewer/Import/GltfAnimations.h"

#include "Viewer/Import/GltfAccessor.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/Tracks.h"

#include <map>

namespace sgview {

namespace {

class Reader {
public:
    Reader(GltfDocument const& document, GltfNodes const& nodes, Warnings& warnings)
        : accessor_(document), nodes_(nodes), warnings_(warnings)
    {
    }

    ModelAnimation read(tinygltf::Animation const& source, std::string name)
    {
        ModelAnimation animation;
        animation.name = std::move(name);
        std::map<Index, std::size_t> channelOf;
        for (std::size_t i = 0; i < source.channels.size(); ++i) {
            std::string const what = "animation '" + animation.name + "' channel " + std::to_string(i);
            try {
                addChannel(source, source.channels[i], what, animation, channelOf);
            } catch (ImportError const& error) {
                warnings_.add(std::string(error.what()) + "; left out");
            }
        }
        animation.length = lengthOf(animation);
        return animation;
    }

private:
    void addChannel(tinygltf::Animation const& source, tinygltf::AnimationChannel const& channel,
                    std::string const& what, ModelAnimation& animation,
                    std::map<Index, std::size_t>& channelOf)
    {
        if (channel.target_node < 0 ||
            static_cast<std::size_t>(channel.target_node) >= nodes_.indexOf.size() || channel.sampler < 0 ||
            static_cast<std::size_t>(channel.sampler) >= source.samplers.size()) {
            warnings_.add(what + ": its node or sampler does not exist; left out");
            return;
        }
        if (channel.target_path == "weights") {
            warnings_.add("animation '" + animation.name + "': morphing is not animated");
            return;
        }
        Index const node = nodes_.indexOf[static_cast<std::size_t>(channel.target_node)];
        if (node == none)
            return; // outside the scene
        if (nodes_.nodes[static_cast<std::size_t>(node)].hasMatrix) {
            warnings_.add(what + ": a node with a matrix is not animated; left out");
            return;
        }
        auto const [entry, isNew] = channelOf.try_emplace(node, animation.channels.size());
        if (isNew)
            animation.channels.emplace_back().node = node;
        ModelChannel& result = animation.channels[entry->second];
        tinygltf::AnimationSampler const& sampler =
            source.samplers[static_cast<std::size_t>(channel.sampler)];
        if (channel.target_path == "translation")
            readTrack(sampler, what, result.translation);
        else if (channel.target_path == "rotation")
            readTrack(sampler, what, result.rotation);
        else if (channel.target_path == "scale")
            readTrack(sampler, what, result.scale);
        else
            warnings_.add(what + ": '" + channel.target_path + "' is not animated");
    }

    static Vector3 valueAt(GltfNumbers const& n, std::size_t i, Vector3 const&)
    {
        return {n.at(i, 0), n.at(i, 1), n.at(i, 2)};
    }
    static Quaternion valueAt(GltfNumbers const& n, std::size_t i, Quaternion const&)
    {
        return {n.at(i, 0), n.at(i, 1), n.at(i, 2), n.at(i, 3)};
    }

    template <typename T>
    void readTrack(tinygltf::AnimationSampler const& sampler, std::string const& what, ModelTrack<T>& result)
    {
        constexpr std::size_t components = std::is_same_v<T, Quaternion> ? 4 : 3;
        ModelTrack<T> track;
        track.interpolation = sampler.interpolation == "STEP"          ? Interpolation::step
                              : sampler.interpolation == "CUBICSPLINE" ? Interpolation::cubic
                                                                       : Interpolation::linear;
        track.times = accessor_.numbers(sampler.input, {1}, what).values;
        GltfNumbers const values = accessor_.numbers(sampler.output, {components}, what);
        for (std::size_t i = 0; i < values.count; ++i)
            track.values.push_back(valueAt(values, i, T()));
        if (tidyTrack(track))
            result = std::move(track);
        else
            warnings_.add(what + ": keys that are not finite, before the start, or missing; left out");
    }

    GltfAccessor accessor_;
    GltfNodes const& nodes_;
    Warnings& warnings_;
};

bool isEmpty(ModelChannel const& channel)
{
    return channel.translation.times.empty() && channel.rotation.times.empty() && channel.scale.times.empty();
}

} // namespace

std::vector<ModelAnimation> readGltfAnimations(GltfDocument const& document, GltfNodes const& nodes,
                                               Warnings& warnings)
{
    Reader reader(document, nodes, warnings);
    std::vector<ModelAnimation> animations;
    for (tinygltf::Animation const& source : document.content.animations) {
        std::string name = source.name.empty()
                               ? "animation " + std::to_string(&source - document.content.animations.data())
                               : source.name;
        ModelAnimation animation = reader.read(source, std::move(name));
        std::erase_if(animation.channels, isEmpty);
        if (!animation.channels.empty())
            animations.push_back(std::move(animation));
    }
    return animations;
}

} // namespace sgview
