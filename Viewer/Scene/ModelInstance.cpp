#include "Viewer/Scene/ModelInstance.h"

#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGOrderedGroupNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "Viewer/Scene/Animation.h"
#include "Viewer/Scene/SimilaritySplit.h"

#include <algorithm>
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
    for (PosedPart& part : parts_) {
        if (part.node == none)
            continue;
        auto const node = static_cast<std::size_t>(part.node);
        part.outer = splits[node].outer;
        part.map = part.outer.getMatrix() * Matrix(splits[node].inner, Vector3());
        if (part.place)
            part.place->transform = part.outer;
        part.stretch(splits[node].inner);
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
    Matrix const top = top_->transform.getMatrix();
    std::vector<std::pair<double, SGTransformNode*>> order;
    auto const end = parts_.cend();
    for (auto first = parts_.cbegin(), last = first; first != end; first = last) {
        // The parts of a split surface keep their order, as the triangles of one surface do.
        last = std::find_if(first + 1, end, [&](PosedPart const& part) {
            return part.split == none || part.split != first->split;
        });
        if (!first->place)
            continue;
        Bounds bounds;
        std::for_each(first, last, [&](PosedPart const& part) { bounds.add(part.bounds(top)); });
        double const depth = bounds.empty() ? 0.0 : dot(viewDirection, (bounds.low + bounds.high) * 0.5);
        std::for_each(first, last, [&](PosedPart const& part) {
            if (part.place)
                order.emplace_back(depth, part.place.get());
        });
    }
    std::stable_sort(order.begin(), order.end(),
                     [](auto const& a, auto const& b) { return a.first > b.first; });
    for (auto const& [depth, place] : order)
        place->reparent(blendedGroup_, false);
}

std::vector<SurfaceBounds> ModelInstance::surfaceBounds() const
{
    Matrix const top = top_->transform.getMatrix();
    std::vector<SurfaceBounds> all;
    for (PosedPart const& part : parts_)
        all.push_back({part.name, part.bounds(top)});
    return all;
}

std::vector<Vector3> ModelInstance::posedVertices() const
{
    Matrix const top = top_->transform.getMatrix();
    std::vector<Vector3> all;
    for (PosedPart const& part : parts_)
        if (part.drawn->getParent())
            part.addVertices(top, all);
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
    for (PosedPart const& part : parts_)
        if (part.restNormals && part.drawn->getParent())
            part.addNormals(top_->transform, step, all);
    return all;
}

void ModelInstance::setShown(std::size_t index, bool shown)
{
    PosedPart const& part = parts_[index];
    if (!shown)
        part.drawn->deparent();
    else if (!part.drawn->getParent())
        part.drawn->reparent(slotOf(part), false);
}

bool ModelInstance::isShown(std::size_t index) const
{
    return parts_[index].drawn->getParent() != nullptr;
}

void ModelInstance::setBlending(std::size_t index, bool blending)
{
    PosedPart& part = parts_[index];
    part.drawn->blending = blending;
    if (blending == (part.place != nullptr))
        return;
    bool const shown = isShown(index);
    part.drawn->deparent();
    if (part.place)
        part.place->deparent();
    makeSlot(part, blending);
    setShown(index, shown);
}

void ModelInstance::addSurface(Index surface, Index owner)
{
    Model const& model = resources_->model();
    ModelSurface const& source = model.surfaces[static_cast<std::size_t>(surface)];
    ModelMaterial const& material = model.materials[static_cast<std::size_t>(source.material)];
    SurfaceResources const& shared = resources_->surface(surface);

    PosedPart part;
    part.name = source.name;
    part.owner = owner;
    part.material = source.material;
    part.node = source.skin == none ? owner : none;
    part.skin = source.skin;
    part.split = splitOf(surface);
    part.rest = shared.geometry;
    part.restNormals = shared.normals;
    makeSlot(part, material.blending);
    auto drawn = make_smart<SGSurfaceGeometryReferenceNode>(slotOf(part));
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
    part.drawn = drawn;
    parts_.push_back(std::move(part));
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

    PosedPart part;
    part.name = source.name;
    part.owner = owner;
    part.material = source.material;
    part.node = owner;
    part.rest = resources_->curve(curve);
    makeSlot(part, material.blending);
    auto drawn = make_smart<SGCurveGeometryReferenceNode>(slotOf(part));
    drawn->material = makeMaterial(material);
    makeUnlit(drawn->material);
    drawn->blending = material.blending;
    drawn->lineWidth = options_.lineWidth;
    drawn->setGeometry(part.rest);
    part.drawn = drawn;
    parts_.push_back(std::move(part));
}

/// What a part is drawn below while it is shown.
smart_ptr<SGNode> ModelInstance::slotOf(PosedPart const& part)
{
    return part.place ? smart_ptr<SGNode>(part.place) : part.home;
}

void ModelInstance::makeSlot(PosedPart& part, bool blending)
{
    if (blending) {
        part.place = make_smart<SGTransformNode>(blendedGroup_);
        part.place->transform = part.outer;
        return;
    }
    part.place.reset();
    if (!part.home)
        part.home =
            make_smart<SGOrderedGroupNode>(part.node == none ? opaqueGroup_ : transformNode(part.node));
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

} // namespace sgview
