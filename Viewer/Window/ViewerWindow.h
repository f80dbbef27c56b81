#pragma once

#include "SceneGraph/SGRendererModule.h"
#include "Viewer/Window/Controls.h"
#include "Viewer/Window/Gui.h"
#include "Viewer/Window/Hud.h"
#include "Viewer/Window/Panel.h"
#include "Viewer/Window/ScenePainter.h"
#include "Viewer/Window/Session.h"
#include "Viewer/Window/SplitView.h"
#include "Viewer/Window/WindowContext.h"

#include <chrono>
#include <optional>
#include <string>

namespace sgview {

/// The window that shows models, until a person closes it. Draws only when something has changed or plays.
class ViewerWindow {
public:
    /// \throws ContextError, SGModuleError, TechniqueError
    ViewerWindow(WindowOptions const& options, TechniqueFinder const& findTechnique);

    /// Returns when the window is closed.
    void run();

private:
    using Time = std::chrono::steady_clock::time_point;

    void handleEvents();
    void handle(SDL_Event const& event);
    void handlePointer(SDL_Event const& event);
    void drawFrame();
    void drawScene();
    void buildWidgets();
    void buildOverlays(ImVec2 area);
    void arrange();
    void keepPicture(bool withPanel);
    [[nodiscard]] bool isFrameDue() const;
    [[nodiscard]] std::chrono::milliseconds patience() const;
    void updateTitle();

    WindowContext context_;
    SGRendererModule module_;
    Session session_;
    Gui gui_;
    Panel panel_;
    Hud hud_;
    ScenePainter painter_;
    SplitView split_;
    Controls controls_;
    std::string screenshotName_;
    std::string title_;
    ScreenMeasures measures_;      ///< as arranged last, as are the next two
    int panelWidth_ = 0;           ///< pixels
    quarl::Rect<int> sceneArea_{}; ///< pixels, from the lower left corner
    int framesWanted_ = 1;
    std::optional<bool> pictureWanted_; ///< whether with the panel
    bool isOpen_ = true;
};

} // namespace sgview
