#pragma once

#include "Maths/Matrix3.h"
#include "Maths/Vector3.h"
#include "SceneGraph/CameraBase.h"

#include <array>
#include <string_view>
#include <vector>

namespace sgview {

/// From where a person looks at a model.
struct CameraView {
    enum class Up { y, z, x }; ///< which of the model's axes points up in the picture

    double azimuth = 30.0; ///< degrees around the up axis: 0 looks at the model's front, 90 at its left side
    double elevation = 20.0; ///< degrees above the horizon
    double zoom = 1.0;       ///< magnification against the fitted picture, greater than 0
    Up up = Up::y;
    bool orthographic = false; ///< parallel edges stay parallel, and nothing shrinks with its distance
};

inline constexpr std::array allUpAxes{CameraView::Up::y, CameraView::Up::z, CameraView::Up::x};

/// "z"
[[nodiscard]] std::string_view nameOf(CameraView::Up up);

/// Turns the axis that points up into y.
[[nodiscard]] Matrix3 uprightness(CameraView::Up up);

/// The axis that points up.
[[nodiscard]] Vector3 upDirection(CameraView::Up up);

/// Half of what the shorter side of the picture shows at distance 1, at magnification 1. An orthographic
/// picture shows as much as a perspective one does at the target's distance.
[[nodiscard]] double slopeOfView();

/// World to the camera's axes: x to the right, y up, looking down -z.
[[nodiscard]] Matrix3 viewRotation(CameraView const& view);

/// The way the camera looks, in world space; unit length.
[[nodiscard]] Vector3 viewDirection(CameraView const& view);

/// What a picture shows at distance 1, from where the camera looks.
struct ViewEdges {
    double left = -1.0;
    double right = 1.0;
    double bottom = -1.0;
    double top = 1.0;
};

/// Of a camera that stands so far from what it looks at.
/// \param near, far  what must not be cut off; of a perspective view, as far as a depth buffer allows
[[nodiscard]] Matrix projectionOf(CameraView const& view, ViewEdges const& edges, double distance,
                                  double near, double far);

/// Where a camera stands that has all points in view.
struct FittedView {
    Vector3 target;  ///< what the middle of the picture shows
    double distance; ///< from the camera to the target, greater than 0
};

/// The nearest place with a small margin, at magnification 1.
/// \param points         as for `fitCamera`
/// \param width, height  of the picture, greater than 0; their ratio counts
[[nodiscard]] FittedView fitView(std::vector<Vector3> const& points, CameraView const& view, double width,
                                 double height);

/// A camera from the nearest place that has all points in view, with a small margin.
/// \param points         those that are not finite do not count; where none are left, a cube of size 2 about
///                       the origin is looked at
/// \param width, height  of the picture in pixels, greater than 0
[[nodiscard]] smart_ptr<CameraBase> fitCamera(std::vector<Vector3> const& points, CameraView const& view,
                                              int width, int height);

} // namespace sgview
