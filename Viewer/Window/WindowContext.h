#pragma once

#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/SDLHandles.h"
#include "Viewer/Window/ScreenMeasures.h"

#include <SDL2/SDL.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace sgview {

/// A window on a screen with an OpenGL context: fixed-function, 8 bits a colour, 24 bits of depth. The
/// context is current while this lives; one at a time.
class WindowContext {
public:
    /// \param size   points
    /// \param scale  pixels a point; as the desktop and the screen want it where nothing is said
    /// \throws ContextError
    explicit WindowContext(PictureSize size, std::optional<double> scale = std::nullopt);
    WindowContext(WindowContext const&) = delete;
    WindowContext& operator=(WindowContext const&) = delete;

    /// What still holds OpenGL names then drops them without a call.
    ~WindowContext();

    /// They change with the window's size and from screen to screen.
    [[nodiscard]] ScreenMeasures measures() const;

    /// Whether there is anything to be seen of it: neither minimised nor hidden.
    [[nodiscard]] bool isShown() const;

    /// Says that a frame is begun now.
    void beginFrame();

    /// How long to wait before the next frame: no more are drawn than the screen shows.
    [[nodiscard]] std::chrono::milliseconds untilNextFrame() const;

    void setTitle(std::string const& title);
    void toggleFullScreen();

    /// Shows what was drawn.
    void swap();

    [[nodiscard]] SDL_Window* window() const { return window_.get(); }
    [[nodiscard]] void* context() const { return context_.get(); }

private:
    void open(char const* driver, PictureSize size);
    bool openWith(int samples, PictureSize size);
    [[nodiscard]] std::chrono::duration<double> refreshInterval() const;

    std::optional<double> scale_;
    double desktopScale_ = 1.0; ///< on top of the screen's own ratio
    bool isX_ = false;          ///< where units are pixels always
    std::unique_ptr<VideoDriver> driver_;
    std::unique_ptr<SDL_Window, WindowEnd> window_;
    std::unique_ptr<void, ContextEnd> context_;
    std::chrono::steady_clock::time_point nextFrame_;
};

} // namespace sgview
