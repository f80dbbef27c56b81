#pragma once

#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Bench/BenchScene.h"

#include <vector>

namespace sgview {

/// Transforms nested in one another that wind around a circle, a cube at every tenth level. The transform at
/// the top turns with every frame.
class DeepScene : public BenchScene {
public:
    /// \param levels  of transforms, below the one that turns
    /// \param moving  every transform is set anew for each frame
    DeepScene(int levels, bool moving);

    void prepare(int frame) override;

private:
    bool moving_;
    smart_ptr<SGTransformNode> top_;
    std::vector<smart_ptr<SGTransformNode>> levels_;
};

} // namespace sgview
