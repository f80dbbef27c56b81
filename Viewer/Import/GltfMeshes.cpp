#include "Viewer/Import/GltfMeshes.h"

#include "Viewer/Import/CurveBuilder.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/LocalMap.h"
#include "Viewer/Import/PhysicalMaterial.h"
#include "Viewer/Import/SkinWeights.h"
#include "Viewer/Import/SurfaceFinisher.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace sgview {

namespace {

std::vector<Vector3> vectorsOf(GltfNumbers const& numbers)
{
    std::vector<Vector3> vectors(numbers.count);
    for (std::size_t i = 0; i < numbers.count; ++i)
        vectors[i] = {numbers.at(i, 0), numbers.at(i, 1), numbers.at(i, 2)};
    return vectors;
}

int find(std::map<std::string, int> const& attributes, std::string const& name)
{
    auto const found = attributes.find(name);
    return found == attributes.end() ? none : found->second;
}

std::int32_t asVertex(std::uint32_t index)
{
    return index > 0x7FFFFFFFU ? none : static_cast<std::int32_t>(index);
}

/// Facets of triangle lists, strips and fans (glTF 2.0, section 3.7.2.1).
std::vector<std::int32_t> facetsOf(std::vector<std::uint32_t> const& order, int mode)
{
    std::vector<std::int32_t> facets;
    auto const add = [&](std::size_t a, std::size_t b, std::size_t c) {
        facets.insert(facets.end(), {asVertex(order[a]), asVertex(order[b]), asVertex(order[c])});
    };
    if (mode == TINYGLTF_MODE_TRIANGLES)
        for (std::size_t i = 0; i + 2 < order.size(); i += 3)
            add(i, i + 1, i + 2);
    else
        for (std::size_t i = 0; i + 2 < order.size(); ++i)
            if (mode == TINYGLTF_MODE_TRIANGLE_FAN)
                add(i + 1, i + 2, 0);
            else
                add(i, i + 1 + i % 2, i + 2 - i % 2);
    return facets;
}

std::vector<std::array<std::int32_t, 2>> segmentsOf(std::vector<std::uint32_t> const& order, int mode)
{
    std::vector<std::array<std::int32_t, 2>> segments;
    std::size_t const step = mode == TINYGLTF_MODE_LINE ? 2 : 1;
    for (std::size_t i = 0; i + 1 < order.size(); i += step)
        segments.push_back({asVertex(order[i]), asVertex(order[i + 1])});
    if (mode == TINYGLTF_MODE_LINE_LOOP && order.size() > 2)
        segments.push_back({asVertex(order.back()), asVertex(order.front())});
    return segments;
}

} // namespace

void GltfMeshes::attach(GltfNodes const& nodes)
{
    for (std::size_t i = 0; i < nodes.nodes.size(); ++i) {
        if (!nodes.drawn[i])
            continue;
        tinygltf::Node const& source = document_.content.nodes[static_cast<std::size_t>(nodes.numberOf[i])];
        if (source.mesh < 0)
            continue;
        if (static_cast<std::size_t>(source.mesh) >= document_.content.meshes.size())
            throw ImportError(ImportFailure::broken, document_.file,
                              "node '" + nodes.nodes[i].name + "': mesh " + std::to_string(source.mesh) +
                                  " does not exist");
        Index const skin = skinOf(source.skin, nodes);
        auto const& atRest = document_.content.meshes[static_cast<std::size_t>(source.mesh)].weights;
        Use const use{source.mesh, skin == none ? none : static_cast<Index>(i), source.skin,
                      source.weights.empty() ? atRest : source.weights};
        auto [entry, isNew] = instances_.try_emplace(use);
        if (isNew)
            entry->second = instantiate(use, skin);
        model_.nodes[i].surfaces = entry->second.surfaces;
        model_.nodes[i].curves = entry->second.curves;
    }
}

Index GltfMeshes::skinOf(int number, GltfNodes const& nodes)
{
    if (number < 0)
        return none;
    auto const [entry, isNew] = skins_.try_emplace(number, none);
    if (!isNew)
        return entry->second;
    std::string const what = "skin " + std::to_string(number);
    if (static_cast<std::size_t>(number) >= document_.content.skins.size())
        throw ImportError(ImportFailure::broken, document_.file, what + " does not exist");
    tinygltf::Skin const& source = document_.content.skins[static_cast<std::size_t>(number)];

    ModelSkin skin;
    skin.name = source.name.empty() ? what : source.name;
    for (int const joint : source.joints) {
        if (joint < 0 || static_cast<std::size_t>(joint) >= nodes.indexOf.size())
            throw ImportError(ImportFailure::broken, document_.file,
                              what + ": joint " + std::to_string(joint) + " does not exist");
        skin.bones.push_back({nodes.indexOf[static_cast<std::size_t>(joint)], {}});
    }
    if (skin.bones.empty())
        throw ImportError(ImportFailure::broken, document_.file, what + " has no joints");
    if (source.inverseBindMatrices >= 0) {
        GltfNumbers const matrices = accessor_.numbers(source.inverseBindMatrices, {16}, what);
        if (matrices.count < skin.bones.size())
            throw ImportError(ImportFailure::broken, document_.file,
                              what + ": too few inverse bind matrices");
        for (std::size_t bone = 0; bone < skin.bones.size(); ++bone) {
            Matrix& matrix = skin.bones[bone].inverseBind;
            for (int row = 0; row < 3; ++row)
                for (int column = 0; column < 4; ++column)
                    matrix(row, column) = matrices.at(bone, static_cast<std::size_t>(4 * column + row));
            if (!isFinite(matrix)) {
                warnings_.add(what + ": an inverse bind matrix that is not finite is left out");
                matrix = {};
            }
        }
    }
    entry->second = static_cast<Index>(model_.skins.size());
    model_.skins.push_back(std::move(skin));
    return entry->second;
}

GltfMeshes::Instance GltfMeshes::instantiate(Use const& use, Index skin)
{
    tinygltf::Mesh const& mesh = document_.content.meshes[static_cast<std::size_t>(use.mesh)];
    std::string const name = mesh.name.empty() ? "mesh " + std::to_string(use.mesh) : mesh.name;
    Instance instance;
    for (tinygltf::Primitive const& primitive : mesh.primitives)
        addPrimitive(use, skin, primitive, name, instance);
    return instance;
}

std::size_t GltfMeshes::planOf(int material) const
{
    std::size_t const byDefault = plans_.size() - 1;
    if (material < 0)
        return plans_[byDefault];
    if (static_cast<std::size_t>(material) >= byDefault)
        throw ImportError(ImportFailure::broken, document_.file,
                          "material " + std::to_string(material) + " does not exist");
    return plans_[static_cast<std::size_t>(material)];
}

std::vector<Vector3> GltfMeshes::positionsOf(Use const& use, tinygltf::Primitive const& primitive,
                                             std::string const& attribute, std::string const& what) const
{
    int const accessor = find(primitive.attributes, attribute);
    if (accessor < 0)
        return {};
    std::vector<Vector3> vectors = vectorsOf(accessor_.numbers(accessor, {3}, what + " " + attribute));
    for (std::size_t t = 0; t < primitive.targets.size() && t < use.morphWeights.size(); ++t) {
        double const weight = use.morphWeights[t];
        int const target = find(primitive.targets[t], attribute);
        if (target < 0 || weight == 0.0 || !std::isfinite(weight))
            continue;
        std::vector<Vector3> const offsets =
            vectorsOf(accessor_.numbers(target, {3}, what + " morph target " + std::to_string(t)));
        for (std::size_t v = 0; v < std::min(vectors.size(), offsets.size()); ++v)
            vectors[v] += weight * offsets[v];
    }
    return vectors;
}

std::vector<CoordinateSet> GltfMeshes::coordinatesOf(tinygltf::Primitive const& primitive,
                                                     std::size_t vertices, std::string const& what) const
{
    std::vector<CoordinateSet> sets;
    for (int number = 0;; ++number) {
        std::string const attribute = "TEXCOORD_" + std::to_string(number);
        int const accessor = find(primitive.attributes, attribute);
        if (accessor < 0)
            return sets;
        GltfNumbers const numbers = accessor_.numbers(accessor, {2}, what + " " + attribute);
        CoordinateSet& set = sets.emplace_back(vertices);
        for (std::size_t v = 0; v < std::min(vertices, numbers.count); ++v)
            set[v] = {numbers.at(v, 0), numbers.at(v, 1)};
    }
}

std::vector<Colour> GltfMeshes::coloursOf(tinygltf::Primitive const& primitive, std::size_t vertices,
                                          std::string const& what) const
{
    int const accessor = find(primitive.attributes, "COLOR_0");
    if (accessor < 0)
        return {};
    GltfNumbers const numbers = accessor_.numbers(accessor, {3, 4}, what + " COLOR_0");
    std::vector<Colour> colours(vertices, Colour{1, 1, 1, 1});
    for (std::size_t v = 0; v < std::min(vertices, numbers.count); ++v)
        for (std::size_t c = 0; c < numbers.components; ++c)
            colours[v][c] = fraction(numbers.at(v, c));
    return colours;
}

void GltfMeshes::bind(ModelSurface& surface, Use const& use, Index skin, tinygltf::Primitive const& primitive)
{
    std::size_t const bones = document_.content.skins[static_cast<std::size_t>(use.skin)].joints.size();
    SkinWeights weights(surface.positions.size());
    for (int set = 0;; ++set) {
        std::string const suffix = std::to_string(set);
        int const jointAccessor = find(primitive.attributes, "JOINTS_" + suffix);
        int const weightAccessor = find(primitive.attributes, "WEIGHTS_" + suffix);
        if (jointAccessor < 0 || weightAccessor < 0)
            break;
        GltfNumbers const joints = accessor_.numbers(jointAccessor, {4}, surface.name + " JOINTS_" + suffix);
        GltfNumbers const values =
            accessor_.numbers(weightAccessor, {4}, surface.name + " WEIGHTS_" + suffix);
        for (std::size_t v = 0; v < std::min({surface.positions.size(), joints.count, values.count}); ++v)
            for (std::size_t k = 0; k < 4; ++k) {
                double const joint = joints.at(v, k);
                double const weight = values.at(v, k);
                if (!(weight > 0.0))
                    continue;
                if (!(joint >= 0.0 && joint < static_cast<double>(bones)))
                    throw ImportError(ImportFailure::broken, document_.file,
                                      "'" + surface.name +
                                          "': a vertex hangs on a joint that does not exist");
                weights.add(v, static_cast<Index>(joint), weight);
            }
    }
    std::vector<ModelBone>& list = model_.skins[static_cast<std::size_t>(skin)].bones;
    Index boneOfUnbound = none;
    if (weights.hasUnbound()) {
        // A bone on the mesh's own node: such a vertex stays where that node has it.
        boneOfUnbound = static_cast<Index>(list.size());
        list.push_back({use.node, {}});
    }
    weights.store(surface, boneOfUnbound);
    surface.skin = skin;
}

void GltfMeshes::addCurves(std::vector<Vector3> const& positions, std::vector<std::uint32_t> const& order,
                           int mode, std::size_t plan, std::vector<Colour> const& colours,
                           std::string const& name, Instance& instance)
{
    std::vector<ModelCurve> curves = buildCurves(positions, segmentsOf(order, mode));
    if (curves.empty())
        return;
    Index const material = materials_.ofCurve(plan, colours);
    for (ModelCurve& curve : curves) {
        curve.name = name;
        curve.material = material;
        instance.curves.push_back(static_cast<Index>(model_.curves.size()));
        model_.curves.push_back(std::move(curve));
    }
}

void GltfMeshes::addPrimitive(Use const& use, Index skin, tinygltf::Primitive const& primitive,
                              std::string const& name, Instance& instance)
{
    ModelSurface surface;
    surface.name = name;
    surface.positions = positionsOf(use, primitive, "POSITION", name);
    std::size_t const vertices = surface.positions.size();
    std::vector<std::uint32_t> order;
    if (primitive.indices >= 0) {
        order = accessor_.indices(primitive.indices, name + " indices");
    } else {
        order.resize(vertices);
        std::iota(order.begin(), order.end(), 0U);
    }
    if (vertices == 0)
        return;
    if (primitive.mode < TINYGLTF_MODE_POINTS || primitive.mode > TINYGLTF_MODE_TRIANGLE_FAN)
        throw ImportError(ImportFailure::broken, document_.file,
                          "'" + name + "': primitives of kind " + std::to_string(primitive.mode) +
                              " do not exist");
    if (primitive.mode == TINYGLTF_MODE_POINTS) {
        hasPoints_ = true;
        warnings_.add("'" + name + "': points are not drawn");
        return;
    }
    std::vector<Colour> const colours = coloursOf(primitive, vertices, name);
    std::size_t const plan = planOf(primitive.material);
    if (primitive.mode < TINYGLTF_MODE_TRIANGLES) {
        addCurves(surface.positions, order, primitive.mode, plan, colours, name, instance);
        return;
    }

    surface.normals = positionsOf(use, primitive, "NORMAL", name);
    if (surface.normals.size() != vertices)
        surface.normals.clear();
    surface.facets = facetsOf(order, primitive.mode);
    if (skin != none)
        bind(surface, use, skin, primitive);
    materials_.dress(surface, plan, coordinatesOf(primitive, vertices, name), colours);
    finishSurface(surface, Crease::everywhere, warnings_);
    if (surface.facets.empty())
        return;
    instance.surfaces.push_back(static_cast<Index>(model_.surfaces.size()));
    model_.surfaces.push_back(std::move(surface));
}

} // namespace sgview
