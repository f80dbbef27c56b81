#include "Viewer/Window/SplitFigures.h"

#include "Viewer/Window/OverlayBox.h"

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace sgview {

namespace {

constexpr std::array<int, 4> amplifications{1, 10, 50, 255};
constexpr char const* caption = "shown on the left, brighter by";

struct Form {
    std::vector<std::string> lines;
    bool hasChoice = false; ///< of the amplification
};

/// The fullest first.
std::array<Form, 3> formsOf(PictureDifference const& difference)
{
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%zu of %zu pixels mismatch: %.3f%%", difference.mismatches,
                  difference.pixels, 100.0 * difference.share());
    std::string const share = text.data();
    std::string const verdict = std::string(difference.isTolerable() ? "Alike" : "Different") +
                                ": the diagnostic accepts less than 1%.";
    std::string const largest = "largest difference: " + std::to_string(difference.largest) + " of 255";
    std::string const elsewhere =
        "where pixels match: " + std::to_string(difference.largestElsewhere) + " of 255";
    return {{{{"How they differ", share, largest, elsewhere, verdict}, true},
             {{share, verdict}, true},
             {{share}, false}}};
}

float heightOf(std::string const& text, float width)
{
    return ImGui::CalcTextSize(text.c_str(), nullptr, false, width).y + ImGui::GetStyle().ItemSpacing.y;
}

float heightOf(Form const& form, float width)
{
    float height = form.hasChoice ? heightOf(caption, width) + ImGui::GetFrameHeightWithSpacing() : 0.0F;
    for (std::string const& line : form.lines)
        height += heightOf(line, width);
    return height;
}

float widthOfChoice()
{
    ImGuiStyle const& style = ImGui::GetStyle();
    float width = 0.0F;
    for (int const factor : amplifications)
        width += ImGui::GetFrameHeight() + style.ItemInnerSpacing.x + style.ItemSpacing.x +
                 ImGui::CalcTextSize((std::to_string(factor) + "x").c_str()).x;
    return width;
}

void build(Form const& form, float width, int& amplification)
{
    beginOverlayBox("difference");
    ImGui::PushTextWrapPos(ImGui::GetCursorPosX() + width);
    for (std::string const& line : form.lines)
        ImGui::TextUnformatted(line.c_str());
    if (form.hasChoice) {
        ImGui::TextDisabled("%s", caption);
        for (int const factor : amplifications) {
            ImGui::RadioButton((std::to_string(factor) + "x").c_str(), &amplification, factor);
            ImGui::SameLine();
        }
        ImGui::NewLine();
    }
    ImGui::PopTextWrapPos();
    ImGui::End();
}

} // namespace

void buildSplitFigures(PictureDifference const& difference, ImVec2 room, int& amplification)
{
    ImVec2 const padding = ImGui::GetStyle().WindowPadding;
    float const width = room.x - 2.0F * padding.x;
    float const height = room.y - 2.0F * padding.y + ImGui::GetStyle().ItemSpacing.y;
    for (Form const& form : formsOf(difference))
        if (heightOf(form, width) <= height && (!form.hasChoice || widthOfChoice() <= width)) {
            build(form, width, amplification);
            return;
        }
}

} // namespace sgview
