#include "Viewer/Window/DisplaySection.h"

#include "Viewer/Window/DisplaySwitches.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/Session.h"

#include <imgui.h>

namespace sgview {

namespace {

/// A bone without a name goes by its node's number.
std::string nameOf(InfluenceMap::Bone const& bone)
{
    return bone.name.empty() ? "node " + std::to_string(bone.node) : bone.name;
}

void buildBoneChoice(InfluenceMap& map)
{
    if (map.bones().empty()) {
        ImGui::TextDisabled("no bones in this model");
        return;
    }
    ImGui::SetNextItemWidth(-1.0F);
    if (!ImGui::BeginCombo("##bone", ("bone: " + nameOf(map.bones()[map.chosen()])).c_str()))
        return;
    for (std::size_t i = 0; i < map.bones().size(); ++i) {
        ImGui::PushID(static_cast<int>(i));
        if (ImGui::Selectable(nameOf(map.bones()[i]).c_str(), i == map.chosen()))
            map.choose(i);
        if (i == map.chosen() && ImGui::IsWindowAppearing())
            ImGui::SetScrollHereY();
        ImGui::PopID();
    }
    ImGui::EndCombo();
}

} // namespace

void DisplaySection::build(Session& session)
{
    float const secondColumn = inPixels(160.0F);
    for (std::size_t i = 0; i < displaySwitches.size(); ++i) {
        DisplaySwitch const& one = displaySwitches[i];
        if (i % 2 == 1)
            ImGui::SameLine(secondColumn);
        ImGui::Checkbox(one.text, &(session.display.*one.option));
        if (ImGui::IsItemHovered())
            ImGui::SetTooltip("key: %s", keyFor(one.action).c_str());
    }
    if (session.display.influences && session.document.appearance())
        buildBoneChoice(session.document.appearance()->influences());
    ImGui::ColorEdit3("background", &session.display.background.r, ImGuiColorEditFlags_NoInputs);
}

} // namespace sgview
