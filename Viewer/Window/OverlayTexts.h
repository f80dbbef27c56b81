#pragma once

#include "Viewer/Window/Session.h"

#include <imgui.h>

namespace sgview {

// Texts over the scene, built with Dear ImGui.

/// The overlays' labels at their places.
/// \param camera  that the scene was drawn by
/// \param corner  upper left one of the picture, pixels
void buildOverlayLabels(Session const& session, CameraBase const& camera, ImVec2 corner);

/// What the overlays show, and the ramp of the influence map with its numbers.
/// \param corner  upper right one of the place for it, pixels
void buildOverlayLegend(Session& session, ImVec2 corner);

} // namespace sgview
