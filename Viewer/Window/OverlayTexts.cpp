#include "Viewer/Window/OverlayTexts.h"

#include "Viewer/Overlay/InfluenceRamp.h"
#include "Viewer/Overlay/Projection.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/OverlayBox.h"

#include <cmath>
#include <cstdio>

namespace sgview {

namespace {

ImU32 toImGui(Color const& color)
{
    return ImGui::GetColorU32(ImVec4{color.r, color.g, color.b, color.a});
}

/// Dark letters with a light rim, so that they stand out from anything.
void addLabel(ImDrawList& list, ImVec2 middle, char const* text)
{
    ImVec2 const size = ImGui::CalcTextSize(text);
    ImVec2 const place{std::round(middle.x - size.x / 2.0F), std::round(middle.y - size.y / 2.0F)};
    float const rim = inPixels(4.0F);
    list.AddRectFilled({place.x - rim, place.y}, {place.x + size.x + rim, place.y + size.y},
                       IM_COL32(255, 255, 255, 220), rim);
    list.AddText(place, IM_COL32(10, 15, 20, 255), text);
}

bool isInside(PlaceInPicture const& place, quarl::Rect<int> const& viewport, double rim)
{
    return place.x > rim && place.x < viewport.width - rim && place.y > rim &&
           place.y < viewport.height - rim;
}

/// The last place on the label's line that is in the picture.
std::optional<PlaceInPicture> visiblePlace(CameraBase const& camera, OverlayLabel const& label)
{
    auto const rim = static_cast<double>(inPixels(12.0F));
    for (double const part : {1.0, 0.8, 0.6, 0.4, 0.2}) {
        std::optional<PlaceInPicture> const place =
            project(camera, label.start + (label.place - label.start) * part);
        if (place && isInside(*place, camera.viewport, rim))
            return place;
    }
    return std::nullopt;
}

/// From 0 at the left to 1 at the right, with the lines that the map has and their numbers.
void buildRamp()
{
    float const width = inPixels(240.0F);
    float const height = inPixels(18.0F);
    float const gap = inPixels(2.0F);
    constexpr int steps = 60;
    ImVec2 const corner = ImGui::GetCursorScreenPos();
    ImDrawList& list = *ImGui::GetWindowDrawList();
    for (int i = 0; i < steps; ++i)
        list.AddRectFilledMultiColor(
            {corner.x + width * static_cast<float>(i) / steps, corner.y},
            {corner.x + width * static_cast<float>(i + 1) / steps, corner.y + height},
            toImGui(influenceColor(static_cast<double>(i) / steps)),
            toImGui(influenceColor((i + 1.0) / steps)), toImGui(influenceColor((i + 1.0) / steps)),
            toImGui(influenceColor(static_cast<double>(i) / steps)));
    for (int quarter = 0; quarter <= 4; ++quarter) {
        float const x = corner.x + width * static_cast<float>(quarter) / 4.0F;
        if (quarter > 0 && quarter < 4)
            list.AddLine({x, corner.y}, {x, corner.y + height}, toImGui(influenceLineColor(quarter / 4.0)),
                         gap);
        char text[24];
        std::snprintf(text, sizeof text, "%g", quarter / 4.0);
        float const textWidth = ImGui::CalcTextSize(text).x;
        list.AddText({x - textWidth * static_cast<float>(quarter) / 4.0F, corner.y + height + gap},
                     ImGui::GetColorU32(ImGuiCol_Text), text);
    }
    ImGui::Dummy({width, height + gap + ImGui::GetTextLineHeight()});
}

void buildInfluences(InfluenceMap const& map)
{
    if (map.bones().empty()) {
        ImGui::TextUnformatted("influence map: no bones in this model");
        return;
    }
    ImGui::Text("hold of %s on vertices", map.bones()[map.chosen()].name.c_str());
    buildRamp();
    ImGui::TextDisabled("edges only: held by no bone");
}

} // namespace

void buildOverlayLabels(Session const& session, CameraBase const& camera, ImVec2 corner)
{
    ImDrawList& list = *ImGui::GetBackgroundDrawList();
    for (OverlayLabel const& label : session.document.appearance()->labels()) {
        std::optional<PlaceInPicture> const place = visiblePlace(camera, label);
        if (!place)
            continue;
        addLabel(list,
                 {corner.x + static_cast<float>(place->x),
                  corner.y + static_cast<float>(camera.viewport.height - place->y)},
                 label.text.c_str());
    }
}

void buildOverlayLegend(Session& session, ImVec2 corner)
{
    SceneAppearance& appearance = *session.document.appearance();
    std::vector<std::string> const lines = appearance.legend();
    if (lines.empty() && !session.display.influences)
        return;
    beginOverlayBox("legend", corner, {1.0F, 0.0F});
    for (std::string const& line : lines)
        ImGui::TextUnformatted(line.c_str());
    if (session.display.influences)
        buildInfluences(appearance.influences());
    ImGui::End();
}

} // namespace sgview
