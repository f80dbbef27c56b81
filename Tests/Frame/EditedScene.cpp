#include "Tests/Frame/EditedScene.h"

#include "Tests/Frame/Limb.h"

#include <array>
#include <map>
#include <stdexcept>

namespace {

constexpr std::size_t mostOfAKind = 12;
constexpr int bones = 2;

std::size_t vertexCount(SGSurfaceGeometryReferenceNode const& surface)
{
    return surface.getGeometry()->get()->vertices.size();
}

/// Before it gets another number of vertices.
void forgetVertices(SGSurfaceGeometryReferenceNode& surface)
{
    surface.textureLayers.clear();
    surface.setBoneWeights(nullptr);
    surface.setBoneTransforms(nullptr);
}

/// Makes nodes and wrappers anew. What two layers show stays one picture: they share its way of being
/// repeated.
class Copier {
public:
    void copyChildren(SGNode const& from, smart_ptr<SGNode> const& to)
    {
        for (SGNode const* child = from.getFirstChild(); child; child = child->getNextSibling()) {
            if (auto const* const transform = dynamic_cast<SGTransformNode const*>(child))
                copyChildren(*child, addTransform(to, transform->transform));
            else
                copySurface(dynamic_cast<SGSurfaceGeometryReferenceNode const&>(*child), to);
        }
    }

private:
    void copySurface(SGSurfaceGeometryReferenceNode const& from, smart_ptr<SGNode> const& parent)
    {
        auto to = make_smart<SGSurfaceGeometryReferenceNode>(parent);
        to->setGeometry(make_smart<SharedGeometry>(from.getGeometry()->get()));
        to->setNormals(make_smart<SharedSurfaceGeometry>(from.getNormals()->get()));
        to->setFacets(make_smart<SharedSurfaceGeometry>(from.getFacets()->get()));
        if (from.getBoneWeights())
            to->setBoneWeights(make_smart<SharedBoneWeights>(from.getBoneWeights()->get()));
        if (from.getBoneTransforms())
            to->setBoneTransforms(make_smart<SharedBoneTransforms>(from.getBoneTransforms()->get()));
        to->material = from.material;
        to->blending = from.blending;
        to->unlit = from.unlit;
        to->wireframe = from.wireframe;
        for (SGTextureLayer layer : from.textureLayers) {
            layer.texture = copyOf(layer.texture);
            layer.coordinates = make_smart<SharedTextureCoords>(layer.coordinates->get());
            to->textureLayers.push_back(layer);
        }
    }

    smart_ptr<SharedImage> const& copyOf(smart_ptr<SharedImage> const& image)
    {
        smart_ptr<SharedImage>& copy = images_[image.get()];
        if (!copy)
            copy = make_smart<SharedImage>(image->get());
        return copy;
    }

    std::map<SharedImage const*, smart_ptr<SharedImage>> images_;
};

} // namespace

EditedScene::EditedScene(std::uint32_t seed) : random_(seed)
{
    images_ = {imageOf(2, 2, {{0, 0, 0}, {255, 255, 255}, {255, 0, 0}, {0, 0, 255}}),
               imageOf(4, 1, {{255, 0, 0}, {255, 255, 0}, {0, 255, 0}, {0, 255, 255}})};
    for (int i = 0; i < 6; ++i)
        add();
}

Stage EditedScene::copy() const
{
    Stage stage;
    Copier().copyChildren(*lit, stage.lit);
    return stage;
}

void EditedScene::edit()
{
    switch (upTo(12)) {
    case 0:
    case 1:
        return add();
    case 2:
        return drop();
    case 3:
        return move();
    case 4:
        if (!transforms_.empty())
            transforms_[upTo(transforms_.size())]->transform = place();
        return;
    default:
        break;
    }
    if (surfaces_.empty())
        return;
    static constexpr std::array changes{&EditedScene::reshape, &EditedScene::share, &EditedScene::skin,
                                        &EditedScene::pose,    &EditedScene::paint, &EditedScene::restyle,
                                        &EditedScene::strip};
    (this->*changes[upTo(changes.size())])(*anySurface());
}

std::uint32_t EditedScene::upTo(std::size_t count)
{
    return static_cast<std::uint32_t>(random_() % count);
}

double EditedScene::within(double low, double high)
{
    return low + (high - low) * upTo(1000) / 1000.0;
}

Color EditedScene::color()
{
    auto const part = [this] { return static_cast<float>(within(0.0, 1.0)); };
    return {part(), part(), part(), part()};
}

Transform EditedScene::place()
{
    double const scale = within(0.4, 1.2);
    return {Matrix3(), Vector3(within(-0.4, 0.4), within(-0.4, 0.4), within(-0.4, 0.4)),
            chance() ? scale : -scale};
}

smart_ptr<SurfaceGeometryData const> EditedScene::shape()
{
    switch (upTo(4)) {
    case 0:
        return make_smart<SurfaceGeometryData const>();
    case 1:
        return tubeGeometry(static_cast<int>(1 + upTo(4)), 0.5);
    default:
        return squareGeometry(within(-0.8, -0.1), within(0.1, 0.8), within(-1.0, 1.0));
    }
}

smart_ptr<SGNode> EditedScene::anyParent()
{
    if (transforms_.empty() || chance())
        return lit;
    return transforms_[upTo(transforms_.size())];
}

smart_ptr<SGNode> EditedScene::anyNode()
{
    if (!transforms_.empty() && (surfaces_.empty() || chance()))
        return transforms_[upTo(transforms_.size())];
    return surfaces_.empty() ? smart_ptr<SGNode>() : smart_ptr<SGNode>(anySurface());
}

smart_ptr<SGSurfaceGeometryReferenceNode> EditedScene::anySurface()
{
    return surfaces_[upTo(surfaces_.size())];
}

void EditedScene::add()
{
    if (transforms_.size() < mostOfAKind && chance())
        transforms_.push_back(addTransform(anyParent(), place()));
    else if (surfaces_.size() < mostOfAKind)
        surfaces_.push_back(addSurface(anyParent(), shape(), matt(color())));
}

/// For good, or to come back another time.
void EditedScene::drop()
{
    if (!transforms_.empty() && upTo(3) == 0)
        transforms_.erase(transforms_.begin() + upTo(transforms_.size()));
    if (!surfaces_.empty() && upTo(3) == 0)
        surfaces_.erase(surfaces_.begin() + upTo(surfaces_.size()));
    if (smart_ptr<SGNode> const node = anyNode())
        node->deparent();
}

void EditedScene::move()
{
    smart_ptr<SGNode> const node = anyNode();
    try {
        if (node)
            node->reparent(anyParent(), chance());
    } catch (std::invalid_argument const&) {
        return; // below itself
    }
}

void EditedScene::reshape(Surface& surface)
{
    forgetVertices(surface);
    auto const data = shape();
    surface.setGeometry(make_smart<SharedGeometry>(data));
    surface.setNormals(make_smart<SharedSurfaceGeometry>(data));
    surface.setFacets(make_smart<SharedSurfaceGeometry>(data));
}

void EditedScene::share(Surface& surface)
{
    smart_ptr<Surface> const other = anySurface();
    if (other.get() == &surface)
        return;
    surface.setGeometry(other->getGeometry());
    surface.setNormals(nullptr);
    surface.setFacets(other->getFacets());
    surface.setNormals(other->getNormals());
    surface.setBoneWeights(other->getBoneWeights());
    surface.setBoneTransforms(other->getBoneTransforms());
    surface.textureLayers = other->textureLayers;
}

void EditedScene::skin(Surface& surface)
{
    auto weights = make_smart<BoneWeightsData>();
    for (std::size_t i = 0; i < vertexCount(surface); ++i) {
        double const first = within(0.0, 1.0);
        weights->addVertex(std::array{BoneInfluence{0, first}, BoneInfluence{1, 1.0 - first}});
    }
    surface.setBoneWeights(make_smart<SharedBoneWeights>(weights));
    surface.setBoneTransforms(
        make_smart<SharedBoneTransforms>(BoneTransformVector({bones, BoneTransform()})));
    pose(surface);
}

void EditedScene::pose(Surface& surface)
{
    if (!surface.getBoneTransforms())
        return;
    std::vector<BoneTransform>& pose = surface.getBoneTransforms()->edit().transforms;
    pose.assign(upTo(5) == 0 ? 0 : bones, BoneTransform());
    for (BoneTransform& bone : pose)
        bone.translation = Vector3(within(-0.3, 0.3), within(-0.3, 0.3), within(-0.3, 0.3));
}

void EditedScene::paint(Surface& surface)
{
    surface.textureLayers.clear();
    for (std::uint32_t i = upTo(3); i > 0; --i) {
        SGTextureLayer layer;
        layer.texture = images_[upTo(images_.size())];
        std::vector<Vector3> coordinates(vertexCount(surface));
        for (Vector3& coordinate : coordinates)
            coordinate = Vector3(within(-1.0, 2.0), within(-1.0, 2.0), 0.0);
        layer.coordinates = textureCoordinates(coordinates);
        layer.clamp = chance();
        layer.colorize = chance();
        layer.firstColor = color();
        layer.secondColor = color();
        surface.textureLayers.push_back(layer);
    }
}

void EditedScene::restyle(Surface& surface)
{
    surface.material = matt(color());
    surface.blending = chance();
    surface.unlit = chance();
    surface.wireframe = upTo(4) == 0;
}

/// Of what the renderer keeps on it.
void EditedScene::strip(Surface& surface)
{
    switch (upTo(6)) {
    case 0:
        return surface.clearExtraData();
    case 1:
        return surface.getGeometry()->clearExtraData();
    case 2:
        return surface.getFacets()->clearExtraData();
    case 3:
        return images_[upTo(images_.size())]->clearExtraData();
    case 4:
        return root->clearExtraData();
    default:
        return SGObject::removeExtraDataEverywhere("GL");
    }
}
