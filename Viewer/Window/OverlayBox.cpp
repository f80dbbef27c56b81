#include "Viewer/Window/OverlayBox.h"

namespace sgview {

namespace {

constexpr ImGuiWindowFlags unframed = ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                                      ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoFocusOnAppearing |
                                      ImGuiWindowFlags_NoNav;

} // namespace

void beginOverlayBox(char const* name)
{
    ImGui::Begin(name, nullptr, unframed | ImGuiWindowFlags_AlwaysAutoResize);
}

void beginOverlayBox(char const* name, ImVec2 place, ImVec2 pivot)
{
    ImGui::SetNextWindowPos(place, ImGuiCond_Always, pivot);
    beginOverlayBox(name);
}

void beginOverlayBar(char const* name, ImVec2 corner, float width)
{
    ImGui::SetNextWindowSize({width, 0.0F});
    ImGui::SetNextWindowPos(corner, ImGuiCond_Always, {0.0F, 1.0F});
    ImGui::Begin(name, nullptr, unframed);
}

} // namespace sgview
