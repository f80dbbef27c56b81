#pragma once

#include "SceneGraph/SGZTransformNode.h"
#include "Viewer/Overlay/CurveDrawing.h"
#include "Viewer/Overlay/OverlayStyle.h"
#include "Viewer/Scene/ModelScene.h"

#include <utility>
#include <vector>

namespace sgview {

/// The bones of a model, in front of everything: each a slender double pyramid that points from a joint to
/// the next, and a small one at a joint that none follows. A model without skins shows its nodes.
class SkeletonOverlay {
public:
    SkeletonOverlay(ModelScene& scene, OverlayStyle const& style);

    /// Follows the model's pose.
    void update();

private:
    ModelScene& scene_;
    double knob_; ///< length of what marks a last joint
    Guest<SGZTransformNode> top_;
    CurveCopies bones_;
    CurveCopies knobs_;
    std::vector<std::pair<Index, Index>> links_; ///< nodes: a joint and the one after it
    std::vector<Index> ends_;                    ///< nodes that no joint follows
};

/// The nodes that are bones of a skin, in ascending order; without skins, all of them.
[[nodiscard]] std::vector<Index> jointsOf(Model const& model);

} // namespace sgview
