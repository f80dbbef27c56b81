#pragma once

#include "Maths/Matrix3.h"
#include "Maths/Vector3.h"
#include "SceneGraph/CameraBase.h"

#include <vector>

namespace sgview {

/// From where a person looks at a model.
struct CameraView {
    double azimuth = 30.0; ///< degrees around the up axis: 0 looks at the model's front, 90 at its left side
    double elevation = 20.0; ///< degrees above the horizon
    double zoom = 1.0;       ///< magnification against the fitted picture, greater than 0
};

/// Half of what the shorter side of the picture shows at distance 1, at magnification 1.
[[nodiscard]] double slopeOfView();

/// World to the camera's axes: x to the right, y up, looking down -z.
[[nodiscard]] Matrix3 viewRotation(CameraView const& view);

/// The way the camera looks, in world space; unit length.
[[nodiscard]] Vector3 viewDirection(CameraView const& view);

/// Where a camera stands that has all points in view.
struct FittedView {
    Vector3 target;  ///< what the middle of the picture shows
    double distance; ///< from the camera to the target, greater than 0
};

/// The nearest place with a small margin, at magnification 1.
/// \param points         as for `fitCamera`
/// \param turn           world to the camera's axes
/// \param width, height  of the picture, greater than 0; their ratio counts
[[nodiscard]] FittedView fitView(std::vector<Vector3> const& points, Matrix3 const& turn, double width,
                                 double height);

/// A perspective camera from the nearest place that has all points in view, with a small margin.
/// \param points         those that are not finite do not count; where none are left, a cube of size 2 about
///                       the origin is looked at
/// \param width, height  of the picture in pixels, greater than 0
[[nodiscard]] smart_ptr<CameraBase> fitCamera(std::vector<Vector3> const& points, CameraView const& view,
                                              int width, int height);

} // namespace sgview
