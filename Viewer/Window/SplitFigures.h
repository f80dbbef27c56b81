#pragma once

#include "Viewer/Platform/PictureDifference.h"

#include <imgui.h>

namespace sgview {

/// How two pictures differ, in words with Dear ImGui, where ImGui::SetNextWindowPos says; as much of it as
/// has room.
/// \param room           pixels
/// \param amplification  of the differences' picture; changed where a person asks for another
void buildSplitFigures(PictureDifference const& difference, ImVec2 room, int& amplification);

} // namespace sgview
