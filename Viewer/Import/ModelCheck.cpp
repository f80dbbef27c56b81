#include "Viewer/Import/ModelCheck.h"

#include "Viewer/Import/ImportError.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <span>
#include <string>

namespace sgview {

namespace {

constexpr double tolerance = 1e-6;
constexpr std::size_t mostInfluences = 4;
constexpr std::int32_t largestImageSide = 16384;
constexpr float largestShininess = 128.0F;

class Checker {
public:
    Checker(Model const& model, std::string_view file) : model_(model), file_(file) {}

    void check()
    {
        checkAll("image", model_.images, &Checker::checkImage);
        checkAll("material", model_.materials, &Checker::checkMaterial);
        checkAll("node", model_.nodes, &Checker::checkNode);
        checkAll("skin", model_.skins, &Checker::checkSkin);
        checkAll("surface", model_.surfaces, &Checker::checkSurface);
        checkAll("curve", model_.curves, &Checker::checkCurve);
        checkAll("animation", model_.animations, &Checker::checkAnimation);
        checkAll("split", model_.splits, &Checker::checkSplit);
    }

private:
    template <typename T>
    void checkAll(std::string_view kind, std::vector<T> const& list, void (Checker::*checkOne)(T const&))
    {
        require(list.size() <= static_cast<std::size_t>(std::numeric_limits<Index>::max()),
                "too many of a kind");
        kind_ = kind;
        for (index_ = 0; index_ < list.size(); ++index_)
            (this->*checkOne)(list[index_]);
    }

    void require(bool holds, std::string_view reason) const
    {
        if (!holds)
            throw ImportError(ImportFailure::broken, file_,
                              std::string(kind_) + " " + std::to_string(index_) + ": " + std::string(reason));
    }

    template <typename T>
    void requireIndex(Index index, std::vector<T> const& list, std::string_view reason) const
    {
        require(index >= 0 && static_cast<std::size_t>(index) < list.size(), reason);
    }

    void checkImage(ModelImage const& image)
    {
        for (std::int32_t const side : {image.width, image.height})
            require(side > 0 && side <= largestImageSide &&
                        std::has_single_bit(static_cast<std::uint32_t>(side)),
                    "a side that is no power of two within 16384");
        std::size_t const rowBytes =
            (static_cast<std::size_t>(image.width) * (image.alpha ? 4 : 3) + 3) / 4 * 4;
        require(image.rows.size() == rowBytes * static_cast<std::size_t>(image.height),
                "rows of a wrong size");
    }

    void checkMaterial(ModelMaterial const& material)
    {
        for (auto const& colour : {material.ambient, material.diffuse, material.specular, material.emissive})
            require(std::ranges::all_of(colour, [](float c) { return c >= 0.0F && c <= 1.0F; }),
                    "a colour outside 0 to 1");
        require(material.shininess >= 0.0F && material.shininess <= largestShininess,
                "shininess outside 0 to 128");
        require(material.textures.size() <= mostLayers, "too many texture layers");
        for (ModelTexture const& texture : material.textures) {
            requireIndex(texture.image, model_.images, "a texture layer without an image");
            require(texture.coordinates >= 0, "a texture layer without coordinates");
        }
    }

    void checkNode(ModelNode const& node)
    {
        require(node.parent == none || (node.parent >= 0 && static_cast<std::size_t>(node.parent) < index_),
                "its parent does not stand before it");
        require(isFinite(node.translation) && isFinite(node.scale), "a map that is not finite");
        requireUnit(node.rotation);
        if (node.hasMatrix)
            requireAffine(node.matrix);
        for (Index const surface : node.surfaces)
            requireIndex(surface, model_.surfaces, "a surface that does not exist");
        for (Index const curve : node.curves)
            requireIndex(curve, model_.curves, "a curve that does not exist");
    }

    void requireUnit(Quaternion const& q) const
    {
        double const square = q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
        require(std::abs(square - 1.0) < tolerance, "a rotation that is not of unit length");
    }

    void requireAffine(Matrix const& matrix) const
    {
        require(std::all_of(matrix.data(), matrix.data() + 16, [](double x) { return std::isfinite(x); }),
                "a matrix that is not finite");
        require(matrix(3, 0) == 0.0 && matrix(3, 1) == 0.0 && matrix(3, 2) == 0.0 && matrix(3, 3) == 1.0,
                "a matrix that is not affine");
    }

    void checkSkin(ModelSkin const& skin)
    {
        require(!skin.bones.empty(), "no bones");
        require(skin.bones.size() <= mostBonesOfSkin, "too many bones");
        for (ModelBone const& bone : skin.bones) {
            if (bone.node != none)
                requireIndex(bone.node, model_.nodes, "a bone whose node does not exist");
            requireAffine(bone.inverseBind);
        }
    }

    void checkSurface(ModelSurface const& surface)
    {
        requireIndex(surface.material, model_.materials, "a material that does not exist");
        std::size_t const vertices = surface.positions.size();
        require(vertices <= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()),
                "too many vertices");
        require(surface.normals.size() == vertices, "not one normal a vertex");
        require(std::ranges::all_of(surface.positions, isFinite), "a position that is not finite");
        require(std::ranges::all_of(surface.normals,
                                    [](Vector3 const& n) { return std::abs(dot(n, n) - 1.0) < tolerance; }),
                "a normal that is not of unit length");
        for (auto const& set : surface.coordinates) {
            require(set.size() == vertices, "not one pair of coordinates a vertex");
            require(std::ranges::all_of(
                        set, [](auto const& uv) { return std::isfinite(uv[0]) && std::isfinite(uv[1]); }),
                    "coordinates that are not finite");
        }
        require(surface.facets.size() % 3 == 0, "facets that are not in threes");
        require(std::ranges::all_of(surface.facets,
                                    [&](std::int32_t vertex) {
                                        return vertex >= 0 && static_cast<std::size_t>(vertex) < vertices;
                                    }),
                "a facet's vertex does not exist");
        checkLayers(surface);
        checkInfluences(surface);
    }

    void checkLayers(ModelSurface const& surface)
    {
        auto const& textures = model_.materials[static_cast<std::size_t>(surface.material)].textures;
        require(surface.skin == none || textures.size() <= mostLayersOfSkinned,
                "too many texture layers for a surface with a skin");
        for (ModelTexture const& texture : textures)
            requireIndex(texture.coordinates, surface.coordinates, "no coordinates for a texture layer");
    }

    void checkInfluences(ModelSurface const& surface)
    {
        require(surface.mostInfluencesInFile >= 0 && surface.droppedInfluences >= 0, "a negative count");
        std::vector<std::int32_t> const& offsets = surface.influenceOffsets;
        if (surface.skin == none) {
            require(offsets.empty() && surface.influences.empty(), "influences without a skin");
            return;
        }
        requireIndex(surface.skin, model_.skins, "a skin that does not exist");
        require(offsets.size() == surface.positions.size() + 1 && offsets.front() == 0 &&
                    static_cast<std::size_t>(offsets.back()) == surface.influences.size() &&
                    std::ranges::is_sorted(offsets),
                "influence offsets that do not fit");
        for (std::size_t v = 0; v + 1 < offsets.size(); ++v)
            checkInfluencesOfVertex(surface, {surface.influences.begin() + offsets[v],
                                              surface.influences.begin() + offsets[v + 1]});
    }

    void checkInfluencesOfVertex(ModelSurface const& surface, std::span<ModelInfluence const> influences)
    {
        auto const& bones = model_.skins[static_cast<std::size_t>(surface.skin)].bones;
        require(!influences.empty() && influences.size() <= mostInfluences,
                "not one to four influences a vertex");
        double sum = 0.0;
        for (ModelInfluence const& influence : influences) {
            requireIndex(influence.bone, bones, "an influence of a bone that does not exist");
            require(influence.weight >= 0.0 && influence.weight <= 1.0, "a weight outside 0 to 1");
            sum += influence.weight;
        }
        require(std::abs(sum - 1.0) < tolerance, "weights that do not sum to 1");
        require(std::ranges::is_sorted(influences, std::greater(), &ModelInfluence::weight),
                "weights that are not strongest first");
    }

    void checkCurve(ModelCurve const& curve)
    {
        requireIndex(curve.material, model_.materials, "a material that does not exist");
        require(curve.positions.size() >= 2, "fewer than two positions");
        require(std::ranges::all_of(curve.positions, isFinite), "a position that is not finite");
    }

    void checkAnimation(ModelAnimation const& animation)
    {
        require(std::isfinite(animation.length) && animation.length >= 0.0, "a length that is not finite");
        for (ModelChannel const& channel : animation.channels) {
            requireIndex(channel.node, model_.nodes, "a channel of a node that does not exist");
            require(!model_.nodes[static_cast<std::size_t>(channel.node)].hasMatrix,
                    "a channel of a node with a matrix");
            checkTrack(channel.translation, animation.length, isFinite);
            checkTrack(channel.rotation, animation.length, isFiniteRotation);
            checkTrack(channel.scale, animation.length, isFinite);
        }
    }

    void checkSplit(ModelSplit const& split)
    {
        auto const surfaces = static_cast<Index>(model_.surfaces.size());
        require(split.first >= 0 && split.first < surfaces && split.parts >= 2 &&
                    split.parts <= surfaces - split.first,
                "parts that do not exist");
    }

    static bool isFiniteRotation(Quaternion const& q)
    {
        return std::isfinite(q.x) && std::isfinite(q.y) && std::isfinite(q.z) && std::isfinite(q.w);
    }

    template <typename T>
    void checkTrack(ModelTrack<T> const& track, double end, bool (*isFiniteValue)(T const&))
    {
        std::size_t const valuesAKey = track.interpolation == Interpolation::cubic ? 3 : 1;
        require(track.interpolation <= Interpolation::cubic, "an interpolation that does not exist");
        require(track.values.size() == track.times.size() * valuesAKey, "not as many values as keys");
        require(std::ranges::all_of(track.times, [&](double t) { return t >= 0.0 && t <= end; }),
                "a key outside the animation");
        require(std::ranges::adjacent_find(track.times, std::greater_equal()) == track.times.end(),
                "keys that do not ascend");
        require(std::ranges::all_of(track.values, isFiniteValue), "a key that is not finite");
    }

    Model const& model_;
    std::string_view file_;
    std::string_view kind_;
    std::size_t index_ = 0;
};

} // namespace

void checkModel(Model const& model, std::string_view file)
{
    Checker(model, file).check();
}

} // namespace sgview
