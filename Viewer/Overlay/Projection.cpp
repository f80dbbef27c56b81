#include "Viewer/Overlay/Projection.h"

namespace sgview {

std::optional<PlaceInPicture> project(CameraBase const& camera, Vector3 const& place)
{
    Matrix const map = camera.projection * camera.view;
    auto const row = [&](int r) {
        return map(r, 0) * place.x + map(r, 1) * place.y + map(r, 2) * place.z + map(r, 3);
    };
    double const w = row(3);
    if (!(w > 0.0))
        return std::nullopt;
    return PlaceInPicture{(row(0) / w + 1.0) / 2.0 * camera.viewport.width,
                          (row(1) / w + 1.0) / 2.0 * camera.viewport.height};
}

} // namespace sgview
