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

/// Without the rounding that a turning hierarchy leaves, which is no reason to copy geometry anew. A function
/// of the pose alone: what was posed before does not count.
Matrix3 settled(Matrix3 stretching)
{
    constexpr double grid = 0x1p42;
    for (int i = 0; i < 9; ++i)
        stretching[i] = std::round(stretching[i] * grid) / grid;
    return stretching;
}

/// What the bones do to a vertex, as one map.
BoneTransform blended(std::span<BoneInfluence const> influences, std::vector<BoneTransform> const& bones)
{
    BoneTransform sum{Matrix3() * 0.0, Vector3()};
    for (BoneInfluence const& influence : influences) {
        BoneTransform const& bone = bones[static_cast<std::size_t>(influence.bone)];
        for (int i = 0; i < 9; ++i)
            sum.rotation[i] += bone.rotation[i] * influence.weight;
        sum.translation += bone.translation * influence.weight;
    }
    return sum;
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
            addSurface(surface, static_cast<Index>(i));
        }
        for (Index const curve : model.nodes[i].curves)
            addCurve(curve, static_cast<Index>(i));
    }
    pose(none, 0.0);
}

void ModelInstance::pose(Index animation, double seconds)
{
    nodeMaps_ = poseNodes(resources_->model(), animation, seconds);
    poseSkins(nodeMaps_);

    std::vector<SimilaritySplit> splits(nodeMaps_.size());
    for (std::size_t i = 0; i < nodeMaps_.size(); ++i) {
        splits[i] = splitSimilarity(nodeMaps_[i]);
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
        item.outer = splits[node].outer;
        item.map = item.outer.getMatrix() * Matrix(splits[node].inner, Vector3());
        if (item.place)
            item.place->transform = item.outer;
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
        if (item.drawn->getParent())
            forEachVertex(item, [&all](Vector3 const& vertex) { all.push_back(vertex); });
    return all;
}

std::vector<Vector3> ModelInstance::posedNodes() const
{
    Matrix const top = top_->transform.getMatrix();
    std::vector<Vector3> places;
    for (Matrix const& map : nodeMaps_)
        places.push_back(transformPoint(top, translationOf(map)));
    return places;
}

std::vector<PosedNormal> ModelInstance::posedNormals(std::size_t step) const
{
    std::vector<PosedNormal> all;
    for (Item const& item : items_)
        if (item.restNormals && item.drawn->getParent())
            addPosedNormals(item, step, all);
    return all;
}

void ModelInstance::addPosedNormals(Item const& item, std::size_t step, std::vector<PosedNormal>& all) const
{
    Matrix const top = top_->transform.getMatrix();
    std::vector<Vector3> const& vertices = item.rest->get()->vertices;
    std::vector<UVector3> const& normals = item.restNormals->get()->normals;
    auto const* const surface = static_cast<SGSurfaceGeometryReferenceNode const*>(item.drawn.get());
    for (std::size_t i = 0; i < vertices.size(); i += step) {
        BoneTransform const map = item.skin == none
                                      ? BoneTransform{Matrix3(item.map), translationOf(item.map)}
                                      : blended(surface->getBoneWeights()->get()->influences(i),
                                                surface->getBoneTransforms()->get().transforms);
        // A bone that mirrors turns normals inwards, as the renderer does; a mirroring node does not.
        bool const inverts = item.skin == none && item.outer.getScale() < 0.0;
        Vector3 const direction = cofactors(map.rotation) * normals[i] * (inverts ? -1.0 : 1.0);
        all.push_back({transformPoint(top, map.transform(vertices[i])),
                       UVector3(top_->transform.getRotation() * direction * top_->transform.getScale())});
    }
}

void ModelInstance::setShown(std::size_t part, bool shown)
{
    Item const& item = items_[part];
    if (!shown)
        item.drawn->deparent();
    else if (!item.drawn->getParent())
        item.drawn->reparent(slotOf(item), false);
}

bool ModelInstance::isShown(std::size_t part) const
{
    return items_[part].drawn->getParent() != nullptr;
}

void ModelInstance::setBlending(std::size_t part, bool blending)
{
    Item& item = items_[part];
    item.drawn->blending = blending;
    if (blending == (item.place != nullptr))
        return;
    bool const shown = isShown(part);
    item.drawn->deparent();
    if (item.place)
        item.place->deparent();
    makeSlot(item, blending);
    setShown(part, shown);
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

void ModelInstance::addSurface(Index surface, Index owner)
{
    Model const& model = resources_->model();
    ModelSurface const& source = model.surfaces[static_cast<std::size_t>(surface)];
    ModelMaterial const& material = model.materials[static_cast<std::size_t>(source.material)];
    SurfaceResources const& shared = resources_->surface(surface);

    Item item;
    item.name = source.name;
    item.owner = owner;
    item.material = source.material;
    item.node = source.skin == none ? owner : none;
    item.skin = source.skin;
    item.split = splitOf(surface);
    item.rest = shared.geometry;
    item.restNormals = shared.normals;
    makeSlot(item, material.blending);
    auto drawn = make_smart<SGSurfaceGeometryReferenceNode>(slotOf(item));
    drawn->material = makeMaterial(material);
    drawn->blending = material.blending;
    drawn->unlit = material.unlit || options_.unlit;
    drawn->wireframe = options_.wireframe;
    drawn->lineWidth = options_.lineWidth;
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

void ModelInstance::addCurve(Index curve, Index owner)
{
    Model const& model = resources_->model();
    ModelCurve const& source = model.curves[static_cast<std::size_t>(curve)];
    ModelMaterial const& material = model.materials[static_cast<std::size_t>(source.material)];

    Item item;
    item.name = source.name;
    item.owner = owner;
    item.material = source.material;
    item.node = owner;
    item.rest = resources_->curve(curve);
    makeSlot(item, material.blending);
    auto drawn = make_smart<SGCurveGeometryReferenceNode>(slotOf(item));
    drawn->material = makeMaterial(material);
    makeUnlit(drawn->material);
    drawn->blending = material.blending;
    drawn->lineWidth = options_.lineWidth;
    drawn->setGeometry(item.rest);
    item.drawn = drawn;
    items_.push_back(std::move(item));
}

/// What an item is drawn below while it is shown.
smart_ptr<SGNode> ModelInstance::slotOf(Item const& item)
{
    return item.place ? smart_ptr<SGNode>(item.place) : item.home;
}

void ModelInstance::makeSlot(Item& item, bool blending)
{
    if (blending) {
        item.place = make_smart<SGTransformNode>(blendedGroup_);
        item.place->transform = item.outer;
        return;
    }
    item.place.reset();
    if (!item.home)
        item.home =
            make_smart<SGOrderedGroupNode>(item.node == none ? opaqueGroup_ : transformNode(item.node));
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
        if (!nodeMaps_.empty())
            transforms_[*i]->transform = localTransform(*i);
        parent = transforms_[*i];
    }
    return parent;
}

Transform ModelInstance::localTransform(std::size_t node) const
{
    Transform const own = splitSimilarity(nodeMaps_[node]).outer;
    Index const parent = resources_->model().nodes[node].parent;
    if (parent == none)
        return own;
    return relativeTransform(splitSimilarity(nodeMaps_[static_cast<std::size_t>(parent)]).outer, own);
}

void ModelInstance::bake(Item& item, Matrix3 const& inner) const
{
    Matrix3 const stretching = settled(inner);
    if (stretching == item.baked)
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
