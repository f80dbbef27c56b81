#pragma once

#include "SceneGraph/SGZTransformNode.h"
#include "Viewer/Overlay/CurveDrawing.h"
#include "Viewer/Overlay/OverlayStyle.h"
#include "Viewer/Scene/ModelScene.h"

#include <array>

namespace sgview {

/// The axes of the model's space, in front of everything: x plain, y dashed, z dotted. They stand in the
/// origin or, where that is far away, in the model's lowest corner.
class AxesOverlay {
public:
    AxesOverlay(ModelScene& scene, OverlayStyle const& style);

    /// At the tips.
    [[nodiscard]] std::array<OverlayLabel, 3> const& labels() const { return labels_; }

private:
    Guest<SGZTransformNode> top_;
    std::array<OverlayLabel, 3> labels_;
};

} // namespace sgview
