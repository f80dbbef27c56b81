#include "Viewer/Window/GuiStyle.h"

#include "Viewer/Window/SystemFont.h"

#include <imgui.h>

#include <array>
#include <cmath>
#include <string>

namespace sgview {

namespace {

constexpr float fontSize = 16.0F; // points

/// Dear ImGui keeps one context for all, and so does this.
float scale = 1.0F;

void setSizes()
{
    ImGuiStyle style;
    style.WindowRounding = 6.0F;
    style.FrameRounding = 4.0F;
    style.GrabRounding = 4.0F;
    style.WindowBorderSize = 0.0F;
    style.WindowPadding = {12.0F, 10.0F};
    style.FramePadding = {8.0F, 4.0F};
    style.ItemSpacing = {8.0F, 6.0F};
    style.IndentSpacing = 8.0F;
    style.ScaleAllSizes(scale);
    style.MouseCursorScale = 1.0F; // the desktop draws it
    ImGui::GetStyle() = style;
}

void setColors()
{
    ImGui::StyleColorsDark();
    ImVec4* const colors = ImGui::GetStyle().Colors;
    colors[ImGuiCol_Text] = {0.93F, 0.94F, 0.95F, 1.0F};
    colors[ImGuiCol_TextDisabled] = {0.68F, 0.71F, 0.74F, 1.0F};
    colors[ImGuiCol_WindowBg] = {0.13F, 0.15F, 0.17F, 0.96F};
    colors[ImGuiCol_PopupBg] = {0.16F, 0.18F, 0.20F, 0.98F};
    colors[ImGuiCol_FrameBg] = {0.22F, 0.25F, 0.28F, 1.0F};
    colors[ImGuiCol_FrameBgHovered] = {0.28F, 0.32F, 0.36F, 1.0F};
    colors[ImGuiCol_FrameBgActive] = {0.32F, 0.37F, 0.42F, 1.0F};
    colors[ImGuiCol_Header] = {0.20F, 0.23F, 0.26F, 1.0F};
    colors[ImGuiCol_HeaderHovered] = {0.28F, 0.32F, 0.36F, 1.0F};
    colors[ImGuiCol_HeaderActive] = {0.32F, 0.37F, 0.42F, 1.0F};
    colors[ImGuiCol_Button] = {0.26F, 0.30F, 0.34F, 1.0F};
    colors[ImGuiCol_ButtonHovered] = {0.33F, 0.38F, 0.43F, 1.0F};
    colors[ImGuiCol_ButtonActive] = {0.38F, 0.44F, 0.50F, 1.0F};
    ImVec4 const accent{0.45F, 0.72F, 0.92F, 1.0F};
    for (ImGuiCol const place :
         {ImGuiCol_CheckMark, ImGuiCol_SliderGrab, ImGuiCol_SliderGrabActive, ImGuiCol_PlotLines})
        colors[place] = accent;
    colors[ImGuiCol_PlotHistogram] = {0.25F, 0.45F, 0.60F, 1.0F};
}

void loadFont()
{
    // Latin, Greek, Cyrillic, dashes and quotes, arrows: what file names and texts here are made of.
    static constexpr std::array<ImWchar, 9> ranges{0x20,   0x24F,  0x370,  0x52F, 0x2010,
                                                   0x2027, 0x2190, 0x21FF, 0};
    ImGuiIO& io = ImGui::GetIO();
    io.Fonts->Clear();
    std::string const file = systemFont().string();
    ImFont const* const font =
        file.empty() ? nullptr
                     : io.Fonts->AddFontFromFileTTF(file.c_str(), inPixels(fontSize), nullptr, ranges.data());
    if (!font)
        io.Fonts->AddFontDefault();
    io.FontGlobalScale = font ? 1.0F : scale;
}

} // namespace

void applyGuiStyle(double pixelsPerPoint)
{
    scale = static_cast<float>(pixelsPerPoint);
    setSizes();
    setColors();
    loadFont();
}

float inPixels(float points)
{
    return std::round(points * scale);
}

} // namespace sgview
