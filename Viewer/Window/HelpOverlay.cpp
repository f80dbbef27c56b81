#include "Viewer/Window/HelpOverlay.h"

#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/Keys.h"

#include <algorithm>
#include <array>

namespace sgview {

namespace {

void addRow(std::string const& left, char const* right)
{
    constexpr float keyWidth = 116.0F; // points
    ImGui::TextUnformatted(left.c_str());
    ImGui::SameLine(inPixels(keyWidth));
    ImGui::TextUnformatted(right);
}

void addGroup(KeyGroup const& group)
{
    ImGui::TextDisabled("%s", group.title);
    for (KeyBinding const& binding : group.bindings)
        addRow(strokesOf(binding), binding.text);
    ImGui::Spacing();
    ImGui::Spacing();
}

void addPointer()
{
    ImGui::TextDisabled("Pointer");
    for (PointerGesture const& gesture : pointerGestures())
        addRow(gesture.gesture, gesture.text);
}

} // namespace

void buildHelp(ImVec2 area)
{
    float const edge = inPixels(24.0F);
    // Where a column ends: the groups are few, and people find them by their places.
    constexpr std::array<std::size_t, 2> lastOfColumn{1, 3};
    ImGui::SetNextWindowFocus();
    ImGui::SetNextWindowBgAlpha(1.0F);
    ImGui::SetNextWindowPos({area.x / 2.0F, area.y / 2.0F}, ImGuiCond_Always, {0.5F, 0.5F});
    ImGui::SetNextWindowSizeConstraints({0.0F, 0.0F},
                                        {std::max(area.x - edge, 1.0F), std::max(area.y - edge, 1.0F)});
    ImGui::Begin("keys", nullptr,
                 ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoResize | ImGuiWindowFlags_NoMove |
                     ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_AlwaysAutoResize |
                     ImGuiWindowFlags_HorizontalScrollbar);
    ImGui::BeginGroup();
    for (std::size_t i = 0; i < keyGroups().size(); ++i) {
        addGroup(keyGroups()[i]);
        if (std::ranges::find(lastOfColumn, i) == lastOfColumn.end())
            continue;
        ImGui::EndGroup();
        ImGui::SameLine(0.0F, edge);
        ImGui::BeginGroup();
    }
    addPointer();
    ImGui::EndGroup();
    ImGui::End();
}

} // namespace sgview
