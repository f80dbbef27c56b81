#pragma once

#include <imgui.h>

namespace sgview {

// Small windows without frame over the view, with Dear ImGui; ImGui::End ends each.

/// As wide and high as what is in it, where ImGui::SetNextWindowPos says.
void beginOverlayBox(char const* name);

/// The same at a place; `pivot` tells which of its own points goes there, from 0, 0 to 1, 1.
void beginOverlayBox(char const* name, ImVec2 place, ImVec2 pivot);

/// As high as what is in it.
/// \param corner  lower left one
void beginOverlayBar(char const* name, ImVec2 corner, float width);

} // namespace sgview
