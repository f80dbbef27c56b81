#include "OpenGLRenderer/ManualColorizer.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "SceneGraph/SGGeometryNode.h"
#include "SceneGraph/SGRootNode.h"

namespace {

// Wraps outside 0 to 1, as the low byte of the scaled component.
unsigned char byteOf(float component)
{
    return static_cast<unsigned char>(scaledComponent(component));
}

/// The node's record; made where there is none, or where what is there is none.
UncolorizedTextureData& uncolorizedOf(SGGeometryNode& node)
{
    auto* uncolorized = findExtraData<UncolorizedTextureData>(node, ExtraDataKeys::uncolorizedTextureData);
    if (!uncolorized) {
        auto made = make_smart<UncolorizedTextureData>();
        uncolorized = made.get();
        node.setExtraData(ExtraDataKeys::uncolorizedTextureData, std::move(made));
    }
    return *uncolorized;
}

smart_ptr<SharedImage> tintedCopy(ColorizedTextureInfo const& info)
{
    smart_ptr<Image_base> const& source = info.texture->get();
    Color const& a = info.colorA;
    Color const& b = info.colorB;
    auto const copy = make_smart<Image_base>(source->getWidth(), source->getHeight());
    copy->colorizeFrom(source.get(), byteOf(a.r), byteOf(a.g), byteOf(a.b), byteOf(b.r), byteOf(b.g),
                       byteOf(b.b));
    return make_smart<SharedImage>(copy);
}

} // namespace

void ManualColorizer::enter(SGRootNode* node)
{
    database = getExtraData<ColorizerDatabase>(*node, ExtraDataKeys::colorizerDatabase);
    if (!database) {
        database = make_smart<ColorizerDatabase>();
        node->setExtraData(ExtraDataKeys::colorizerDatabase, database);
    }
    database->beginFrame();
}

void ManualColorizer::leave(SGRootNode*)
{
    database->endFrame();
    database.reset();
}

void ManualColorizer::enter(SGGeometryNode* node)
{
    std::int32_t index = 0;
    for (SGTextureLayer& layer : node->textureLayers) {
        if (layer.colorize) {
            smart_ptr<SharedImage> const copy = tinted({layer.texture, layer.secondColor, layer.firstColor});
            uncolorizedOf(*node).textures[index] = layer.texture; // may run out of memory: before the swap
            layer.texture = copy;
            layer.colorize = false;
        }
        ++index;
    }
}

smart_ptr<SharedImage> ManualColorizer::tinted(ColorizedTextureInfo const& info)
{
    if (info != info) // a component is no number: never found again
        return tintedCopy(info);
    if (database->contains(info))
        return database->get(info);
    smart_ptr<SharedImage> copy = tintedCopy(info);
    database->add(info, copy);
    return copy;
}

void ManualUnColorizer::enter(SGGeometryNode* node)
{
    auto const uncolorized =
        getExtraData<UncolorizedTextureData>(*node, ExtraDataKeys::uncolorizedTextureData);
    if (!uncolorized)
        return;
    for (auto const& [index, texture] : uncolorized->textures) {
        auto const place = static_cast<std::size_t>(index);
        if (place >= node->textureLayers.size())
            continue; // taken away after a frame that did not come to its end
        SGTextureLayer& layer = node->textureLayers[place];
        layer.texture = texture;
        layer.colorize = true;
    }
    node->setExtraData(ExtraDataKeys::uncolorizedTextureData, nullptr);
}
