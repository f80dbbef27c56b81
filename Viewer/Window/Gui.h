#pragma once

#include "Viewer/Window/ScreenMeasures.h"

#include <SDL2/SDL_events.h>

#include <array>

namespace sgview {

/// Dear ImGui in a window, drawn with the fixed-function pipeline on top of a frame. It counts in pixels. One
/// at a time.
class Gui {
public:
    /// \param context  OpenGL's of the window, current for as long as this lives
    Gui(SDL_Window* window, void* context);
    Gui(Gui const&) = delete;
    Gui& operator=(Gui const&) = delete;
    ~Gui();

    /// Follows the window to another size or screen, before a frame.
    void adapt(ScreenMeasures const& measures);

    /// A frame follows on each button's press and release, and on a movement before it: widgets see no more
    /// than where the pointer is and what is held as a frame begins.
    void handle(SDL_Event const& event);

    /// Whether the pointer, or what is typed, is meant for a widget.
    [[nodiscard]] bool wantsPointer() const;
    [[nodiscard]] bool wantsKeys() const;

    /// Widgets are built between the two.
    void begin();
    void end();

private:
    void follow(SDL_Event const& event);
    void placePointer();

    SDL_Window* window_;
    ScreenMeasures measures_;
    SDL_Point pointer_{};           ///< where the events handled so far have led it, the desktop's units
    std::array<bool, 3> pressed_{}; ///< left, right, middle
};

} // namespace sgview
