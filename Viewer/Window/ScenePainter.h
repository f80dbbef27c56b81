#pragma once

#include "Maths/Rect.h"
#include "Viewer/Window/Session.h"

namespace sgview {

/// Brings a session's scene in line with what is switched on, and has it seen through the session's camera.
/// There is a scene.
/// \param area  pixels, from the lower left corner
/// \param free  the part of it that nothing lies over
void prepareScene(Session& session, quarl::Rect<int> const& area, quarl::Rect<int> const& free);

/// Draws a session's scene into a part of the window. Needs the renderer's context current.
class ScenePainter {
public:
    /// Draws one frame; without a scene, the background alone.
    /// \param area  pixels, from the lower left corner
    /// \param free  the part of it that nothing lies over
    void draw(Session& session, quarl::Rect<int> const& area, quarl::Rect<int> const& free);
};

} // namespace sgview
