#include "Viewer/Bench/DeepScene.h"

#include "Viewer/Bench/SceneMotion.h"
#include "Viewer/Bench/SceneShapes.h"

namespace sgview {

DeepScene::DeepScene(int levels, bool moving) : moving_(moving), top_(make_smart<SGTransformNode>(stage()))
{
    constexpr double near = 1.0;
    constexpr double far = 100.0;
    lookFrom({chain::middle + Vector3(0.0, 0.0, chain::viewingDistance), near, far});
    SceneShape const cube = makeCube(0.7);
    smart_ptr<SGTransformNode> parent = top_;
    for (int i = 0; i < levels; ++i) {
        parent = make_smart<SGTransformNode>(parent);
        parent->transform = chain::step(levels);
        levels_.push_back(parent);
        if (i % chain::levelsACube == 0)
            cube.addSurface(parent, colorOf(i));
    }
}

void DeepScene::prepare(int frame)
{
    top_->transform = chain::top(frame);
    if (!moving_)
        return;
    auto const count = static_cast<int>(levels_.size());
    for (int i = 0; i < count; ++i)
        levels_[static_cast<std::size_t>(i)]->transform = chain::movingStep(count, i, frame);
}

} // namespace sgview
