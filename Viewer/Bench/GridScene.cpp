#include "Viewer/Bench/GridScene.h"

#include "Viewer/Bench/SceneMotion.h"

namespace sgview {

GridScene::GridScene(SceneShape const& shape, int count, bool moving) : layout_(count), moving_(moving)
{
    double const distance = layout_.viewingDistance();
    lookFrom({{0.0, 0.0, distance}, 0.5 * distance, 1.5 * distance});
    for (int i = 0; i < count; ++i) {
        auto const& transform = transforms_.emplace_back(make_smart<SGTransformNode>(stage()));
        transform->transform = transformOf(i, 0);
        surfaces_.push_back(shape.addSurface(transform, colorOf(i)));
    }
}

void GridScene::prepare(int frame)
{
    if (!moving_)
        return;
    for (std::size_t i = 0; i < transforms_.size(); ++i)
        transforms_[i]->transform = transformOf(static_cast<int>(i), frame);
}

void GridScene::addTextures(smart_ptr<SharedTextureCoords> const& coordinates)
{
    constexpr std::size_t pictures = 16;
    constexpr std::size_t betweenLayers = 5;
    std::vector<smart_ptr<SharedImage>> images;
    for (std::size_t i = 0; i < pictures; ++i)
        images.push_back(makeChequers(static_cast<int>(i)));
    for (std::size_t i = 0; i < surfaces_.size(); ++i) {
        auto& layers = surfaces_[i]->textureLayers;
        layers.resize(2);
        for (std::size_t layer = 0; layer < layers.size(); ++layer) {
            layers[layer].texture = images[(i + layer * betweenLayers) % pictures];
            layers[layer].coordinates = coordinates;
        }
    }
}

Transform GridScene::transformOf(int index, int frame) const
{
    return {turnAboutY(gridTurn(index) + turnAFrame * frame), layout_.place(index), 1.0};
}

} // namespace sgview
