#pragma once

#include "SceneGraph/SGOrderedGroupNode.h"
#include "Viewer/Overlay/CurveDrawing.h"
#include "Viewer/Overlay/OverlayStyle.h"
#include "Viewer/Scene/ModelScene.h"

namespace sgview {

/// Squares on the ground that the model stands on, every fifth line thicker. Lines lie at multiples of the
/// squares' side, which is 1, 2 or 5 times a power of ten.
class GridOverlay {
public:
    GridOverlay(ModelScene& scene, OverlayStyle const& style);

    [[nodiscard]] double side() const { return side_; }     ///< of a square
    [[nodiscard]] double height() const { return height_; } ///< along the axis that points up

    /// What the grid covers.
    [[nodiscard]] Bounds const& bounds() const { return bounds_; }

private:
    double side_;
    double height_;
    Bounds bounds_;
    Guest<SGOrderedGroupNode> top_;
};

/// The smallest of 1, 2 and 5 times a power of ten that is not smaller.
/// \param length  greater than 0
[[nodiscard]] double roundLength(double length);

} // namespace sgview
