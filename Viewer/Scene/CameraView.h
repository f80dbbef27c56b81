#pragma once

#include "SceneGraph/CameraBase.h"
#include "Viewer/Scene/Bounds.h"

namespace sgview {

/// From where a person looks at a model.
struct CameraView {
    double azimuth = 30.0; ///< degrees around the up axis: 0 looks at the model's front, 90 at its left side
    double elevation = 20.0; ///< degrees above the horizon
    double zoom = 1.0;       ///< magnification against the fitted picture, greater than 0
};

/// The way the camera looks, in world space; unit length.
[[nodiscard]] Vector3 viewDirection(CameraView const& view);

/// A perspective camera that has all of `bounds` in view, with a small margin.
/// \param bounds         where it is empty, a box of size 2 about the origin is looked at
/// \param width, height  of the picture in pixels, greater than 0
[[nodiscard]] smart_ptr<CameraBase> fitCamera(Bounds const& bounds, CameraView const& view, int width,
                                              int height);

} // namespace sgview
