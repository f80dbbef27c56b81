#include "Viewer/Window/Keys.h"

#include <algorithm>
#include <array>

namespace sgview {

namespace {

using enum Action;

constexpr Stroke without{};

constexpr Stroke shift(SDL_Keycode key)
{
    return {key, true};
}

constexpr std::array files{
    KeyBinding{nextFile, {SDLK_PAGEDOWN}, without, "next file of the folder"},
    KeyBinding{previousFile, {SDLK_PAGEUP}, without, "previous file of the folder"},
    KeyBinding{reload, {SDLK_F5}, {SDLK_r}, "read the file again"},
    KeyBinding{screenshot, {SDLK_p}, without, "keep the picture (PNG file)"},
    KeyBinding{screenshotWithPanel, shift(SDLK_p), without, "the same with the panel and all"},
    KeyBinding{quit, {SDLK_q}, without, "quit"},
};

constexpr std::array view{
    KeyBinding{orbitLeft, {SDLK_LEFT}, without, "look from further left"},
    KeyBinding{orbitRight, {SDLK_RIGHT}, without, "look from further right"},
    KeyBinding{orbitUp, {SDLK_UP}, without, "look from higher up"},
    KeyBinding{orbitDown, {SDLK_DOWN}, without, "look from further down"},
    KeyBinding{zoomIn, {SDLK_PLUS}, {SDLK_EQUALS}, "nearer"},
    KeyBinding{zoomOut, {SDLK_MINUS}, without, "farther"},
    KeyBinding{fit, {SDLK_f}, without, "bring the whole model into view"},
    KeyBinding{reset, {SDLK_HOME}, without, "look as at first"},
    KeyBinding{viewFront, {SDLK_1}, without, "from the front"},
    KeyBinding{viewBack, {SDLK_2}, without, "from behind"},
    KeyBinding{viewLeft, {SDLK_3}, without, "from the model's left"},
    KeyBinding{viewRight, {SDLK_4}, without, "from the model's right"},
    KeyBinding{viewTop, {SDLK_5}, without, "from above"},
    KeyBinding{viewBottom, {SDLK_6}, without, "from below"},
    KeyBinding{orthographic, {SDLK_o}, without, "perspective or orthographic"},
    KeyBinding{upAxis, {SDLK_u}, without, "which axis points up: y, z or x"},
};

constexpr std::array animation{
    KeyBinding{playOrPause, {SDLK_SPACE}, without, "play or pause"},
    KeyBinding{stepForward, {SDLK_PERIOD}, without, "a frame forward"},
    KeyBinding{stepBack, {SDLK_COMMA}, without, "a frame back"},
    KeyBinding{faster, shift(SDLK_PERIOD), {SDLK_RIGHTBRACKET}, "twice as fast"},
    KeyBinding{slower, shift(SDLK_COMMA), {SDLK_LEFTBRACKET}, "half as fast"},
    KeyBinding{loop, {SDLK_l}, without, "over and over, or once"},
    KeyBinding{nextAnimation, {SDLK_a}, without, "next animation, or the rest pose"},
    KeyBinding{previousAnimation, shift(SDLK_a), without, "previous animation"},
};

constexpr std::array shown{
    KeyBinding{wireframe, {SDLK_w}, without, "edges instead of faces"},
    KeyBinding{unlit, {SDLK_i}, without, "without lights"},
    KeyBinding{normals, {SDLK_n}, without, "normals"},
    KeyBinding{skeleton, {SDLK_k}, without, "skeleton"},
    KeyBinding{axes, {SDLK_x}, without, "axes"},
    KeyBinding{influences, {SDLK_m}, without, "map of a bone's influence"},
    KeyBinding{grid, {SDLK_g}, without, "grid on the ground"},
    KeyBinding{background, {SDLK_c}, without, "background colour"},
};

constexpr std::array drawing{
    KeyBinding{nextTechnique, {SDLK_t}, without, "next technique"},
    KeyBinding{previousTechnique, shift(SDLK_t), without, "previous technique"},
    KeyBinding{splitView, {SDLK_s}, without, "two techniques, and how they differ"},
    KeyBinding{diagnostic, {SDLK_d}, without, "graphics diagnostic, in the panel"},
};

constexpr std::array window{
    KeyBinding{panel, {SDLK_TAB}, without, "panel"},
    KeyBinding{help, {SDLK_F1}, {SDLK_h}, "this help"},
    KeyBinding{fullScreen, {SDLK_F11}, without, "full screen"},
    KeyBinding{leave, {SDLK_ESCAPE}, without, "stop loading or measuring; close what is open"},
};

constexpr std::array<KeyGroup, 6> groups{{
    {"Files", files},
    {"View", view},
    {"Animation", animation},
    {"What is shown", shown},
    {"How it is drawn", drawing},
    {"Window", window},
}};

constexpr std::array<PointerGesture, 5> gestures{{
    {"Left drag", "orbit"},
    {"Right drag", "pan; or middle, or Shift and left"},
    {"Wheel", "zoom at the pointer"},
    {"Double click", "bring the whole model into view"},
    {"Drop files", "open them"},
}};

/// The key of the main block that a key of the number pad stands for.
SDL_Keycode withoutPad(SDL_Keycode key)
{
    switch (key) {
    case SDLK_KP_PLUS:
        return SDLK_PLUS;
    case SDLK_KP_MINUS:
        return SDLK_MINUS;
    default:
        return key;
    }
}

bool isPressed(Stroke const& stroke, SDL_Keycode key, bool shifted)
{
    // A plus is shifted on some keyboards and not on others.
    return stroke.key == key && key != SDLK_UNKNOWN &&
           (stroke.shift == shifted || key == SDLK_PLUS || key == SDLK_EQUALS);
}

bool goesOnWhileHeld(Action action)
{
    constexpr std::array goingOn{orbitLeft, orbitRight, orbitUp,  orbitDown,
                                 zoomIn,    zoomOut,    stepBack, stepForward};
    return std::ranges::find(goingOn, action) != goingOn.end();
}

void addLine(std::string& list, std::string const& left, char const* right)
{
    constexpr std::size_t column = 20;
    list += "  " + left + std::string(column - std::min(column - 1, left.size()), ' ') + right + "\n";
}

} // namespace

std::string Stroke::name() const
{
    return (shift ? "Shift+" : "") + std::string(SDL_GetKeyName(key));
}

std::span<KeyGroup const> keyGroups()
{
    return groups;
}

std::span<PointerGesture const> pointerGestures()
{
    return gestures;
}

std::optional<Action> actionOf(SDL_KeyboardEvent const& press)
{
    if (press.keysym.mod & (KMOD_CTRL | KMOD_ALT | KMOD_GUI))
        return std::nullopt;
    SDL_Keycode const key = withoutPad(press.keysym.sym);
    bool const shifted = (press.keysym.mod & KMOD_SHIFT) != 0;
    for (KeyGroup const& group : groups)
        for (KeyBinding const& binding : group.bindings)
            if (isPressed(binding.stroke, key, shifted) || isPressed(binding.alternative, key, shifted))
                return press.repeat == 0 || goesOnWhileHeld(binding.action) ? std::optional(binding.action)
                                                                            : std::nullopt;
    return std::nullopt;
}

std::string strokesOf(KeyBinding const& binding)
{
    std::string const first = binding.stroke.name();
    return binding.alternative.key == SDLK_UNKNOWN ? first : first + " or " + binding.alternative.name();
}

std::string keyFor(Action action)
{
    for (KeyGroup const& group : groups)
        for (KeyBinding const& binding : group.bindings)
            if (binding.action == action)
                return binding.stroke.name();
    return {};
}

std::string keyList()
{
    std::string list;
    for (KeyGroup const& group : groups) {
        list += std::string(group.title) + "\n";
        for (KeyBinding const& binding : group.bindings)
            addLine(list, strokesOf(binding), binding.text);
    }
    list += "Pointer\n";
    for (PointerGesture const& gesture : gestures)
        addLine(list, gesture.gesture, gesture.text);
    return list;
}

} // namespace sgview
