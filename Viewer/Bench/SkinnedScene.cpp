#include "Viewer/Bench/SkinnedScene.h"

#include "Viewer/Bench/SceneMotion.h"
#include "Viewer/Bench/SceneShapes.h"

#include <array>

namespace sgview {

namespace {

constexpr int verticesASide = 100;
constexpr double side = 0.9;

smart_ptr<SharedBoneWeights> makeWeights(SkinnedScene::Weights weights)
{
    auto const data = make_smart<BoneWeightsData>();
    for (int row = 0; row < verticesASide; ++row) {
        for (int column = 0; column < verticesASide; ++column) {
            double const weight = weights == SkinnedScene::Weights::varied
                                      ? weightVaried(column, row, verticesASide)
                                      : weightByColumn(column, verticesASide);
            data->addVertex(std::array<BoneInfluence, 2>{{{0, 1.0 - weight}, {1, weight}}});
        }
    }
    return make_smart<SharedBoneWeights>(data);
}

Transform placed(Vector3 const& place, int frame)
{
    return {turnAboutY(turnAFrame * frame), place, 1.0};
}

} // namespace

SkinnedScene::SkinnedScene(int count, Weights weights, bool moving) : layout_(count), moving_(moving)
{
    double const distance = layout_.viewingDistance();
    lookFrom({{0.0, 0.0, distance}, 0.5 * distance, 1.5 * distance});
    SceneShape const sheet = makeSheet(verticesASide, side);
    auto const boneWeights = makeWeights(weights);
    for (int i = 0; i < count; ++i) {
        auto const& transform = transforms_.emplace_back(make_smart<SGTransformNode>(stage()));
        transform->transform = placed(layout_.place(i), 0);
        auto const surface = sheet.addSurface(transform, colorOf(i));
        surface->setBoneWeights(boneWeights);
        auto const& pose = poses_.emplace_back(make_smart<SharedBoneTransforms>());
        pose->edit().transforms.resize(2);
        surface->setBoneTransforms(pose);
    }
    prepare(0);
}

void SkinnedScene::prepare(int frame)
{
    for (std::size_t i = 0; i < poses_.size(); ++i) {
        auto const sheet = static_cast<int>(i);
        double const bend = sheetBend(sheet, frame);
        auto& bones = poses_[i]->edit().transforms;
        bones[0].rotation = turnAboutY(bend);
        bones[1].rotation = turnAboutY(-bend);
        if (moving_)
            transforms_[i]->transform = placed(layout_.place(sheet), frame);
    }
}

} // namespace sgview
