#include "Viewer/Window/LabelledBar.h"

#include "Viewer/Window/GuiStyle.h"

#include <imgui.h>

namespace sgview {

void addLabelledBar(std::string const& name, std::string const& figure, double part)
{
    float const height = inPixels(5.0F);
    float const width = ImGui::GetContentRegionAvail().x;
    float const left = ImGui::GetCursorPosX();
    float const figureWidth = ImGui::CalcTextSize(figure.c_str()).x;

    ImGui::PushTextWrapPos(left + width - figureWidth - ImGui::GetStyle().ItemSpacing.x);
    ImGui::TextUnformatted(name.c_str());
    ImGui::PopTextWrapPos();
    ImGui::SameLine(left + width - figureWidth);
    ImGui::TextUnformatted(figure.c_str());

    ImVec2 const corner = ImGui::GetCursorScreenPos();
    float const length = static_cast<float>(part) * width;
    ImDrawList& list = *ImGui::GetWindowDrawList();
    list.AddRectFilled(corner, {corner.x + width, corner.y + height}, ImGui::GetColorU32(ImGuiCol_FrameBg));
    list.AddRectFilled(corner, {corner.x + length, corner.y + height},
                       ImGui::GetColorU32(ImGuiCol_PlotLines));
    ImGui::Dummy({width, height});
}

} // namespace sgview
