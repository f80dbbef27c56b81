#pragma once

#include "Viewer/Overlay/DisplayOptions.h"
#include "Viewer/Window/Keys.h"

#include <array>

namespace sgview {

/// Something in the view that is on or off, by a box in the panel or by a key.
struct DisplaySwitch {
    char const* text;
    bool DisplayOptions::*option;
    Action action;
};

inline constexpr std::array<DisplaySwitch, 7> displaySwitches{{
    {"wireframe", &DisplayOptions::wireframe, Action::wireframe},
    {"unlit", &DisplayOptions::unlit, Action::unlit},
    {"normals", &DisplayOptions::normals, Action::normals},
    {"skeleton", &DisplayOptions::skeleton, Action::skeleton},
    {"axes", &DisplayOptions::axes, Action::axes},
    {"grid", &DisplayOptions::grid, Action::grid},
    {"influence map", &DisplayOptions::influences, Action::influences},
}};

} // namespace sgview
