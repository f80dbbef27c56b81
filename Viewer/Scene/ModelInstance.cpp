#include "Viewer/Scene/ModelInstance.h"

#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGOrderedGroupNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "Viewer/Scene/Animation.h"
#include "Viewer/Scene/SimilaritySplit.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace sgview {

namespace {

// A texture shows through an unlit surface's glColor, which is the ambient colour.
void makeUnlit(Material& material)
{
    material.setAmbientAndDiffuse(material.diffuse);
}

std::vector<SGTextureLayer> makeLayers(ModelResources const& resources, ModelMaterial const& material,
                                       SurfaceResources const& surface, SceneOptions const& options)
{
    std::vector<SGTextureLayer> layers;
    for (std::size_t i = 0; i < material.textures.size(); ++i) {
        SGTextureLayer layer;
        layer.texture = resources.image(material.textures[i].image);
        layer.coordinates = surface.coordinates[i];
        layer.clamp = material.textures[i].clamp;
        if (options.colorize) {
            layer.colorize = true;
            layer.firstColor = options.colorize->first;
            layer.secondColor = options.colorize->second;
        }
        layers.push_back(std::move(layer));
    }
    return layers;
}

/// The rest geometry, stretched; normals go by the cofactors, which turn them as tangents are turned.
smart_ptr<SurfaceGeometryData> stretched(GeometryData const& geometry, SurfaceGeometryData const* normals,
                                         Matrix3 const& stretching)
{
    auto copy = make_smart<SurfaceGeometryData>();
    copy->closed = geometry.closed;
    copy->vertices.reserve(geometry.vertices.size());
    for (Vector3 const& vertex : geometry.vertices)
        copy->vertices.push_back(stretching * vertex);
    if (normals) {
        Matrix3 const turning = cofactors(stretching);
        copy->normals.reserve(normals->normals.size());
        for (UVector3 const& normal : normals->normals)
            copy->normals.emplace_back(turning * normal);
    }
    return copy;
}

/// But for the rounding that a turning hierarchy leaves, which is no reason to copy geometry anew.
bool sameStretching(Matrix3 const& a, Matrix3 const& b)
{
    for (int i = 0; i < 9; ++i)
        if (!(std::abs(a[i] - b[i]) <= 1e-13))
            return false;
    return true;
}

Vector3 skinned(Vector3 const& rest, std::span<BoneInfluence const> influences,
                std::vector<BoneTransform> const& bones)
{
    Vector3 sum;
    for (BoneInfluence const& influence : influences)
        sum += bones[static_cast<std::size_t>(influence.bone)].transform(rest) * influence.weight;
    return sum;
}

} // namespace

ModelInstance::ModelInstance(std::shared_ptr<ModelResources const> resources, SceneOptions const& options,
                             smart_ptr<SGNode> const& parent)
    : resources_(std::move(resources)),
      options_(options),
      top_(make_smart<SGTransformNode>(parent)),
      opaqueGroup_(make_smart<SGOrderedGroupNode>(top_)),
      blendedGroup_(make_smart<SGOrderedGroupNode>(top_)),
      transforms_(resources_->model().nodes.size())
{
    if (options_.mirror)
        top_->transform = Transform(Matrix3(), Vector3(), -1.0);
    Model const& model = resources_->model();
    for (std::size_t skin = 0; skin < model.skins.size(); ++skin)
        poses_.push_back(make_smart<SharedBoneTransforms>());

    std::vector<bool> skinnedDrawn(model.surfaces.size(), false);
    for (std::size_t i = 0; i < model.nodes.size(); ++i) {
        for (Index const surface : model.nodes[i].surfaces) {
            auto const s = static_cast<std::size_t>(surface);
            bool const isSkinned = model.surfaces[s].skin != none;
            if (isSkinned && skinnedDrawn[s])
                continue; // bones place it wherever it hangs: a second one would lie in the first
            skinnedDrawn[s] = isSkinned;
            addSurface(surface, isSkinned ? none : static_cast<Index>(i));
        }
        for (Index const curve : model.nodes[i].curves)
            addCurve(curve, static_cast<Index>(i));
    }
    pose(none, 0.0);
}

void ModelInstance::pose(Index animation, double seconds)
{
    std::vector<Matrix> const globals = poseNodes(resources_->model(), animation, seconds);
    poseSkins(globals);

    std::vector<SimilaritySplit> splits(globals.size());
    for (std::size_t i = 0; i < globals.size(); ++i) {
        splits[i] = splitSimilarity(globals[i]);
        if (!transforms_[i])
            continue;
        Index const parent = resources_->model().nodes[i].parent;
        transforms_[i]->transform =
            parent == none
                ? splits[i].outer
                : relativeTransform(splits[static_cast<std::size_t>(parent)].outer, splits[i].outer);
    }
    for (Item& item : items_) {
        if (item.node == none)
            continue;
        auto const node = static_cast<std::size_t>(item.node);
        item.map = splits[node].outer.getMatrix() * Matrix(splits[node].inner, Vector3());
        if (item.place)
            item.place->transform = splits[node].outer;
        bake(item, splits[node].inner);
    }
}

void ModelInstance::poseSkins(std::vector<Matrix> const& globals)
{
    std::vector<ModelSkin> const& skins = resources_->model().skins;
    for (std::size_t i = 0; i < skins.size(); ++i) {
        std::vector<BoneTransform>& transforms = poses_[i]->edit().transforms;
        transforms.clear();
        for (ModelBone const& bone : skins[i].bones) {
            Matrix const map = bone.node == none
                                   ? bone.inverseBind
                                   : globals[static_cast<std::size_t>(bone.node)] * bone.inverseBind;
            transforms.push_back({Matrix3(map), translationOf(map)});
        }
    }
}

void ModelInstance::sortBlended(Vector3 const& viewDirection)
{
    std::vector<std::pair<double, SGTransformNode*>> order;
    auto const end = items_.cend();
    for (auto first = items_.cbegin(), last = first; first != end; first = last) {
        // The parts of a split surface keep their order, as the triangles of one surface do.
        last = std::find_if(first + 1, end, [&](Item const& item) {
            return item.split == none || item.split != first->split;
        });
        if (!first->place)
            continue;
        Bounds bounds;
        std::for_each(first, last, [&](Item const& item) { bounds.add(boundsOf(item)); });
        double const depth = bounds.empty() ? 0.0 : dot(viewDirection, (bounds.low + bounds.high) * 0.5);
        std::for_each(first, last, [&](Item const& item) {
            if (item.place)
                order.emplace_back(depth, item.place.get());
        });
    }
    std::stable_sort(order.begin(), order.end(),
                     [](auto const& a, auto const& b) { return a.first > b.first; });
    for (auto const& [depth, place] : order)
        place->reparent(blendedGroup_, false);
}

std::vector<SurfaceBounds> ModelInstance::surfaceBounds() const
{
    std::vector<SurfaceBounds> all;
    for (Item const& item : items_)
        all.push_back({item.name, boundsOf(item)});
    return all;
}

std::vector<Vector3> ModelInstance::posedVertices() const
{
    std::vector<Vector3> all;
    for (Item const& item : items_)
        forEachVertex(item, [&all](Vector3 const& vertex) { all.push_back(vertex); });
    return all;
}

template <typename Function>
void ModelInstance::forEachVertex(Item const& item, Function function) const
{
    Matrix const top = top_->transform.getMatrix();
    std::vector<Vector3> const& vertices = item.rest->get()->vertices;
    if (item.skin == none) {
        Matrix const map = top * item.map;
        for (Vector3 const& vertex : vertices)
            function(transformPoint(map, vertex));
        return;
    }
    auto const* const surface = static_cast<SGSurfaceGeometryReferenceNode const*>(item.drawn.get());
    BoneWeightsData const& weights = *surface->getBoneWeights()->get();
    std::vector<BoneTransform> const& bones = surface->getBoneTransforms()->get().transforms;
    for (std::size_t i = 0; i < vertices.size(); ++i)
        function(transformPoint(top, skinned(vertices[i], weights.influences(i), bones)));
}

Bounds ModelInstance::boundsOf(Item const& item) const
{
    Bounds bounds;
    forEachVertex(item, [&bounds](Vector3 const& vertex) { bounds.add(vertex); });
    return bounds;
}

void ModelInstance::addSurface(Index surface, Index node)
{
    Model const& model = resources_->model();
    ModelSurface const& source = model.surfaces[static_cast<std::size_t>(surface)];
    ModelMaterial const& material = model.materials[static_cast<std::size_t>(source.material)];
    SurfaceResources const& shared = resources_->surface(surface);

    Item item;
    item.name = source.name;
    item.node = node;
    item.skin = source.skin;
    item.split = splitOf(surface);
    item.rest = shared.geometry;
    item.restNormals = shared.normals;
    auto drawn = make_smart<SGSurfaceGeometryReferenceNode>(placeFor(node, material.blending, item.place));
    drawn->material = makeMaterial(material);
    drawn->blending = material.blending;
    drawn->unlit = material.unlit || options_.unlit;
    drawn->wireframe = options_.wireframe;
    if (drawn->unlit)
        makeUnlit(drawn->material);
    drawn->textureLayers = makeLayers(*resources_, material, shared, options_);
    drawn->setSurfaceData(make_smart<SGSurfaceData>(source.name));
    drawn->setGeometry(shared.geometry);
    drawn->setNormals(shared.normals);
    drawn->setFacets(shared.facets);
    if (source.skin != none) {
        drawn->setBoneWeights(shared.boneWeights);
        drawn->setBoneTransforms(poses_[static_cast<std::size_t>(source.skin)]);
    }
    item.drawn = drawn;
    items_.push_back(std::move(item));
}

Index ModelInstance::splitOf(Index surface) const
{
    std::vector<ModelSplit> const& splits = resources_->model().splits;
    auto const found = std::ranges::find_if(splits, [surface](ModelSplit const& split) {
        return surface >= split.first && surface < split.first + split.parts;
    });
    return found == splits.end() ? none : static_cast<Index>(found - splits.begin());
}

void ModelInstance::addCurve(Index curve, Index node)
{
    Model const& model = resources_->model();
    ModelCurve const& source = model.curves[static_cast<std::size_t>(curve)];
    ModelMaterial const& material = model.materials[static_cast<std::size_t>(source.material)];

    Item item;
    item.name = source.name;
    item.node = node;
    item.rest = resources_->curve(curve);
    auto drawn = make_smart<SGCurveGeometryReferenceNode>(placeFor(node, material.blending, item.place));
    drawn->material = makeMaterial(material);
    makeUnlit(drawn->material);
    drawn->blending = material.blending;
    drawn->setGeometry(item.rest);
    item.drawn = drawn;
    items_.push_back(std::move(item));
}

smart_ptr<SGNode> ModelInstance::placeFor(Index node, bool blending, smart_ptr<SGTransformNode>& place)
{
    if (!blending)
        return node == none ? opaqueGroup_ : transformNode(node);
    place = make_smart<SGTransformNode>(blendedGroup_);
    return place;
}

smart_ptr<SGNode> ModelInstance::transformNode(Index node)
{
    // From the node up to an ancestor that has its transform, then down again: hierarchies may be deep.
    std::vector<std::size_t> missing;
    while (node != none && !transforms_[static_cast<std::size_t>(node)]) {
        missing.push_back(static_cast<std::size_t>(node));
        node = resources_->model().nodes[static_cast<std::size_t>(node)].parent;
    }
    smart_ptr<SGNode> parent = opaqueGroup_;
    if (node != none)
        parent = transforms_[static_cast<std::size_t>(node)];
    for (auto i = missing.rbegin(); i != missing.rend(); ++i) {
        transforms_[*i] = make_smart<SGTransformNode>(parent);
        parent = transforms_[*i];
    }
    return parent;
}

void ModelInstance::bake(Item& item, Matrix3 const& stretching) const
{
    if (sameStretching(stretching, item.baked))
        return;
    item.baked = stretching;
    SurfaceGeometryData const* const normals = item.restNormals ? item.restNormals->get().get() : nullptr;
    bool const plain = stretching == Matrix3();
    smart_ptr<SurfaceGeometryData> copy;
    if (!plain)
        copy = stretched(*item.rest->get(), normals, stretching);
    item.drawn->setGeometry(plain ? item.rest : make_smart<SharedGeometry>(copy));
    if (normals)
        static_cast<SGSurfaceGeometryReferenceNode*>(item.drawn.get())
            ->setNormals(plain ? item.restNormals : make_smart<SharedSurfaceGeometry>(copy));
}

} // namespace sgview
