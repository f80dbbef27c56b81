#pragma once

#include "Viewer/Window/WindowContext.h"

#include <array>

namespace sgview {

/// Dear ImGui in a window, drawn with the fixed-function pipeline on top of a frame. One at a time.
class Gui {
public:
    /// \param context  current for as long as this lives
    explicit Gui(WindowContext const& context);
    Gui(Gui const&) = delete;
    Gui& operator=(Gui const&) = delete;
    ~Gui();

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
    void loadFont();

    WindowContext const& context_;
    SDL_Point pointer_{};           ///< where the events handled so far have led it, points
    std::array<bool, 3> pressed_{}; ///< left, right, middle
    double fontRatio_ = 0.0;        ///< pixels a point that the font was made for
};

} // namespace sgview
