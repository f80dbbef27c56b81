#pragma once

#include "SceneGraph/SGRendererModule.h"
#include "Viewer/Platform/TechniqueChoice.h"
#include "Viewer/Scene/DemoScene.h"
#include "Viewer/Window/Playback.h"
#include "Viewer/Window/WindowContext.h"

#include <filesystem>
#include <optional>

namespace sgview {

/// The window in which the demonstration scene moves, until a person closes it. Nothing is drawn while it
/// stands or is hidden.
class DemoWindow {
public:
    /// \param creature  the demonstration model, checked
    /// \param size      points
    /// \param module    where the renderer is, if not in the usual places
    /// \throws ContextError, SGModuleError, TechniqueError
    DemoWindow(Model creature, PictureSize size, std::optional<std::filesystem::path> const& module,
               TechniqueFinder const& findTechnique);

    /// Returns when the window is closed.
    void run();

private:
    void handleEvents();
    void handle(SDL_Event const& event);
    void press(SDL_KeyboardEvent const& key);
    void drawFrame();
    [[nodiscard]] bool isFrameDue() const;

    WindowContext context_;
    SGRendererModule module_;
    DemoScene scene_;
    Playback playback_;
    bool hasChanged_ = true; ///< since the last frame
    bool isOpen_ = true;
};

} // namespace sgview
