#pragma once

#include "SceneGraph/SGSharedData.h"
#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Bench/BenchScene.h"
#include "Viewer/Bench/GridLayout.h"

#include <vector>

namespace sgview {

/// Sheets of 100 by 100 vertices on a square grid that two bones bend, each by a pose of its own that is new
/// in every frame. They share vertices and weights.
class SkinnedScene : public BenchScene {
public:
    /// How the weights vary over a sheet.
    enum class Weights {
        byColumn, ///< 100 distinct ones
        varied,   ///< one of its own at every vertex
    };

    /// \param count   sheets
    /// \param moving  every transform is set anew for each frame, too
    SkinnedScene(int count, Weights weights, bool moving);

    void prepare(int frame) override;

private:
    GridLayout layout_;
    bool moving_;
    std::vector<smart_ptr<SGTransformNode>> transforms_;
    std::vector<smart_ptr<SharedBoneTransforms>> poses_;
};

} // namespace sgview
