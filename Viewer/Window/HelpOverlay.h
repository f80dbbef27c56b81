#pragma once

#include <imgui.h>

namespace sgview {

/// Builds, with Dear ImGui, the table of keys in the middle of an area.
/// \param area  pixels
void buildHelp(ImVec2 area);

} // namespace sgview
