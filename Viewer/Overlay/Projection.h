#pragma once

#include "Maths/Vector3.h"
#include "SceneGraph/CameraBase.h"

#include <optional>

namespace sgview {

/// Where a camera shows a place: pixels from the viewport's lower left corner, or nothing for a place behind
/// the camera.
struct PlaceInPicture {
    double x = 0.0;
    double y = 0.0;
};

[[nodiscard]] std::optional<PlaceInPicture> project(CameraBase const& camera, Vector3 const& place);

} // namespace sgview
