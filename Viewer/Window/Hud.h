#pragma once

#include "Viewer/Window/Session.h"

#include <imgui.h>

namespace sgview {

/// What lies over the view: playback, status, notices, the progress of loading, and a welcome while there is
/// no model.
class Hud {
public:
    /// Builds it with Dear ImGui.
    /// \param area  size of the part of the window that shows the model, pixels
    void build(Session& session, ImVec2 area);
};

} // namespace sgview
