#pragma once

#include "SceneGraph/SGOrderedGroupNode.h"
#include "Viewer/Overlay/CurveDrawing.h"
#include "Viewer/Overlay/OverlayStyle.h"
#include "Viewer/Scene/ModelScene.h"

namespace sgview {

/// The normals of a model's surfaces as lines. A model with very many vertices shows those of some of them,
/// evenly chosen.
class NormalOverlay {
public:
    static constexpr std::size_t mostLines = 2000;
    static constexpr double relativeLength = 0.02; ///< of the model's diagonal

    NormalOverlay(ModelScene& scene, OverlayStyle const& style);

    /// Follows the model's pose.
    void update();

    /// How many vertices there are for each line.
    [[nodiscard]] std::size_t step() const { return step_; }

private:
    ModelScene& scene_;
    double length_;
    std::size_t step_;
    Guest<SGOrderedGroupNode> top_;
    CurveCopies lines_;
};

} // namespace sgview
