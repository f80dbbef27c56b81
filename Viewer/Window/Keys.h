#pragma once

#include <SDL2/SDL_events.h>

#include <optional>
#include <span>
#include <string>

namespace sgview {

/// What a person can ask of the window by a key.
enum class Action {
    nextFile,
    previousFile,
    reload,
    screenshot,
    screenshotWithPanel,
    quit,

    orbitLeft,
    orbitRight,
    orbitUp,
    orbitDown,
    zoomIn,
    zoomOut,
    fit,
    reset,
    viewFront,
    viewBack,
    viewLeft,
    viewRight,
    viewTop,
    viewBottom,
    orthographic,
    upAxis,

    playOrPause,
    stepBack,
    stepForward,
    slower,
    faster,
    loop,
    nextAnimation,
    previousAnimation,

    wireframe,
    unlit,
    normals,
    skeleton,
    axes,
    influences,
    grid,
    background,

    nextTechnique,
    previousTechnique,
    splitView,
    diagnostic,

    panel,
    help,
    fullScreen,
    leave,
};

/// A key, and whether Shift is held with it.
struct Stroke {
    SDL_Keycode key = SDLK_UNKNOWN;
    bool shift = false;

    /// As a person reads it: "Shift+T".
    [[nodiscard]] std::string name() const;
};

/// One line of the table of keys.
struct KeyBinding {
    Action action;
    Stroke stroke;
    Stroke alternative; ///< SDLK_UNKNOWN where there is none
    char const* text;   ///< what it does: "play or pause"
};

/// Lines that belong together.
struct KeyGroup {
    char const* title;
    std::span<KeyBinding const> bindings;
};

/// A movement of the pointer, and what it does.
struct PointerGesture {
    char const* gesture;
    char const* text;
};

/// Every key, once: what the window obeys, shows as help and lists.
[[nodiscard]] std::span<KeyGroup const> keyGroups();

[[nodiscard]] std::span<PointerGesture const> pointerGestures();

/// What a key asks for; nothing where it asks for nothing. Keys pressed with Control, Alt or the system's own
/// key ask for nothing. A key that is held asks again only for what moves or steps: a switch held for long
/// would flicker, and a picture be kept a hundred times.
[[nodiscard]] std::optional<Action> actionOf(SDL_KeyboardEvent const& press);

/// The strokes of an action with "or" between them.
[[nodiscard]] std::string strokesOf(KeyBinding const& binding);

/// The stroke an action is first reached by.
[[nodiscard]] std::string keyFor(Action action);

/// The whole table as lines of text.
[[nodiscard]] std::string keyList();

} // namespace sgview
