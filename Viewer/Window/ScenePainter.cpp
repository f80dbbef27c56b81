#include "Viewer/Window/ScenePainter.h"

#include "Viewer/Platform/HostState.h"

namespace sgview {

void prepareScene(Session& session, quarl::Rect<int> const& area, quarl::Rect<int> const& free)
{
    ModelScene& scene = *session.document.scene();
    SceneAppearance& appearance = *session.document.appearance();
    appearance.update(session.display, upDirection(session.camera.up()), session.pixelsPerPoint);
    Bounds seen = session.document.bounds();
    seen.add(appearance.overlayBounds());
    scene.root()->color = session.display.background;
    scene.setCamera(session.camera.camera(seen, area, free), session.camera.direction());
}

void ScenePainter::draw(Session& session, quarl::Rect<int> const& area, quarl::Rect<int> const& free)
{
    setHostState();
    ModelScene* const scene = session.document.scene();
    if (!scene) {
        auto const nothing = make_smart<SGRootNode>();
        nothing->color = session.display.background;
        session.renderer.render(nothing);
        return;
    }
    prepareScene(session, area, free);
    session.renderer.render(scene->root());
}

} // namespace sgview
