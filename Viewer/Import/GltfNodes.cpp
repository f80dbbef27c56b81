#include "Viewer/Import/GltfNodes.h"

#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/LocalMap.h"

#include <algorithm>

namespace sgview {

namespace {

/// A matrix of the file is taken apart only where nothing is lost.
constexpr double decompositionTolerance = 1e-12;

class Reader {
public:
    Reader(GltfDocument const& document, Warnings& warnings)
        : document_(document), warnings_(warnings), parents_(document.content.nodes.size(), none)
    {
        result_.indexOf.assign(document.content.nodes.size(), none);
    }

    GltfNodes read()
    {
        findParents();
        for (int const root : roots())
            addTree(root, true);
        for (tinygltf::Skin const& skin : document_.content.skins)
            for (int const joint : skin.joints)
                if (exists(joint))
                    addTree(rootOf(joint), false);
        return std::move(result_);
    }

private:
    [[noreturn]] void fail(int node, std::string_view reason) const
    {
        throw ImportError(ImportFailure::broken, document_.file,
                          "node " + std::to_string(node) + ": " + std::string(reason));
    }

    [[nodiscard]] bool exists(int node) const
    {
        return node >= 0 && static_cast<std::size_t>(node) < parents_.size();
    }

    [[nodiscard]] tinygltf::Node const& node(int number) const
    {
        return document_.content.nodes[static_cast<std::size_t>(number)];
    }
    [[nodiscard]] int& parent(int number) { return parents_[static_cast<std::size_t>(number)]; }

    void findParents()
    {
        for (int number = 0; exists(number); ++number)
            for (int const child : node(number).children) {
                if (!exists(child))
                    fail(number, "its child " + std::to_string(child) + " does not exist");
                if (parent(child) != none)
                    fail(child, "it has two parents");
                parent(child) = number;
            }
    }

    int rootOf(int number)
    {
        std::size_t steps = 0;
        while (parent(number) != none) {
            number = parent(number);
            if (++steps > parents_.size())
                fail(number, "it is its own ancestor");
        }
        return number;
    }

    std::vector<int> roots()
    {
        std::vector<tinygltf::Scene> const& scenes = document_.content.scenes;
        if (!scenes.empty()) {
            auto const wanted = static_cast<std::size_t>(std::max(document_.content.defaultScene, 0));
            if (wanted >= scenes.size())
                warnings_.add("the default scene does not exist, took the first");
            return scenes[wanted < scenes.size() ? wanted : 0].nodes;
        }
        std::vector<int> all;
        for (int number = 0; exists(number); ++number)
            if (parent(number) == none)
                all.push_back(number);
        if (all.empty() && !parents_.empty())
            fail(0, "it is its own ancestor");
        return all;
    }

    void addTree(int root, bool drawn)
    {
        if (!exists(root))
            fail(root, "it does not exist, though a scene names it");
        if (result_.indexOf[static_cast<std::size_t>(root)] != none)
            return;
        struct Item {
            int number;
            Index parent;
        };
        std::vector<Item> waiting{{root, none}};
        while (!waiting.empty()) {
            Item const item = waiting.back();
            waiting.pop_back();
            Index& index = result_.indexOf[static_cast<std::size_t>(item.number)];
            if (index != none)
                fail(item.number, "it is its own ancestor, or a scene names it besides its parent");
            index = static_cast<Index>(result_.nodes.size());
            result_.nodes.push_back(read(item.number, item.parent));
            result_.numberOf.push_back(item.number);
            result_.drawn.push_back(drawn);
            auto const& children = node(item.number).children;
            for (auto child = children.rbegin(); child != children.rend(); ++child)
                waiting.push_back({*child, index});
        }
    }

    ModelNode read(int number, Index parentIndex)
    {
        tinygltf::Node const& source = node(number);
        ModelNode result;
        result.name = source.name.empty() ? "node " + std::to_string(number) : source.name;
        result.parent = parentIndex;
        bool sound = true;
        if (source.matrix.size() == 16) {
            std::array<double, 16> columns{};
            std::ranges::copy(source.matrix, columns.begin());
            sound = setLocalMap(result, transpose(Matrix(columns)), decompositionTolerance);
        } else {
            sound = setParts(result, source);
        }
        if (!sound) {
            warnings_.add("node '" + result.name + "': a map that is not finite is left out");
            result.translation = {};
            result.rotation = {};
            result.scale = {1, 1, 1};
            result.hasMatrix = false;
        }
        return result;
    }

    static bool setParts(ModelNode& result, tinygltf::Node const& source)
    {
        if (source.translation.size() == 3)
            result.translation = {source.translation[0], source.translation[1], source.translation[2]};
        if (source.scale.size() == 3)
            result.scale = {source.scale[0], source.scale[1], source.scale[2]};
        if (source.rotation.size() == 4) {
            Quaternion const q{source.rotation[0], source.rotation[1], source.rotation[2],
                               source.rotation[3]};
            if (!hasDirection(q))
                return false;
            result.rotation = normalised(q);
        }
        return isFinite(result.translation) && isFinite(result.scale);
    }

    GltfDocument const& document_;
    Warnings& warnings_;
    std::vector<int> parents_;
    GltfNodes result_;
};

} // namespace

GltfNodes readGltfNodes(GltfDocument const& document, Warnings& warnings)
{
    return Reader(document, warnings).read();
}

} // namespace sgview
