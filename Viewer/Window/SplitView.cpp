#include "Viewer/Window/SplitView.h"

#include "Viewer/Platform/HostState.h"
#include "Viewer/Platform/TechniqueChoice.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/OverlayBox.h"
#include "Viewer/Window/OverlayTexts.h"
#include "Viewer/Window/PictureBlit.h"
#include "Viewer/Window/ScenePainter.h"
#include "Viewer/Window/SplitFigures.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <string>

namespace sgview {

namespace {

constexpr float gap = 4.0F; // points between pictures
constexpr float boxMargin = 12.0F;

/// Of a place from the lower left corner, from the upper one of an area.
ImVec2 upperLeft(quarl::Rect<int> const& place, ImVec2 area)
{
    return {static_cast<float>(place.x), area.y - static_cast<float>(place.y + place.height)};
}

void render(Session& session)
{
    setHostState();
    session.renderer.render(session.document.scene()->root());
    glFinish();
}

} // namespace

void SplitView::begin(Session const& session)
{
    isSplit_ = true;
    sides_ = {};
    difference_.reset();
    sides_[0].technique = Technique::plain;
    sides_[1].technique = session.technique.current();
    if (sides_[1].technique != Technique::plain)
        return;
    for (TechniqueSwitch::Candidate const& candidate : session.technique.candidates())
        if (candidate.lacking.empty())
            sides_[1].technique = candidate.technique;
}

void SplitView::end(Session& session)
{
    if (!isSplit_)
        return;
    isSplit_ = false;
    session.technique.use(session.technique.current(), session.technique.reason());
    session.passes.clear();
}

void SplitView::arrange(Session const& session, quarl::Rect<int> const& area)
{
    auto const between = static_cast<int>(inPixels(gap));
    auto const bottom = static_cast<int>(inPixels(static_cast<float>(session.layout().bottom())));
    cell_.width = std::max((area.width - between) / 2, 1);
    cell_.height = std::max((area.height - bottom - between) / 2, 1);
    int const top = area.y + area.height - cell_.height;
    places_ = {{{area.x, top, cell_.width, cell_.height},
                {area.x + area.width - cell_.width, top, cell_.width, cell_.height},
                {area.x, area.y + bottom, cell_.width, cell_.height}}};
}

void SplitView::draw(Session& session, quarl::Rect<int> const& area)
{
    if (!isSplit_)
        begin(session);
    arrange(session, area);
    session.renderer.passTimeSink = nullptr;
    try {
        quarl::Rect<int> const cell{0, 0, cell_.width, cell_.height};
        prepareScene(session, cell, cell);
        Picture const left = drawSide(session, sides_[0]);
        Picture const right = drawSide(session, sides_[1]);
        difference_ = measureDifference(left, right);
        Picture difference = amplifiedDifference(left, right, amplification_);
        PictureBlit const blit(session.display.background);
        blit.draw(left, places_[0]);
        blit.draw(right, places_[1]);
        blit.draw(difference, places_[2]);
    } catch (TechniqueError const& error) {
        session.notices.warn(error.what());
        session.splits = false;
    }
}

Picture SplitView::drawSide(Session& session, Side& side) const
{
    auto const start = std::chrono::steady_clock::now();
    choose(session.renderer, side.technique);
    render(session);
    auto const ready = std::chrono::steady_clock::now();
    side.first = ready - start;
    // The first frame of a technique derives everything anew; the second is what it costs. While the model
    // moves there is no time for it.
    if (!session.playback.isPlaying()) {
        render(session);
        side.further = std::chrono::steady_clock::now() - ready;
    }
    Picture picture(cell_);
    session.renderer.readPixels(0, 0, cell_.width, cell_.height, SGRenderer::RGBA, picture.pixels.data());
    return picture;
}

void SplitView::build(Session& session, ImVec2 area)
{
    if (!isSplit_)
        return;
    CameraBase const& camera = *session.document.scene()->cameraNode()->camera;
    for (std::size_t i = 0; i < sides_.size(); ++i) {
        buildOverlayLabels(session, camera, upperLeft(places_[i], area));
        buildChoice(session, i, area);
    }
    if (!difference_)
        return;
    float const edge = inPixels(boxMargin);
    ImVec2 const beside{upperLeft(places_[1], area).x, upperLeft(places_[2], area).y};
    ImGui::SetNextWindowPos({beside.x + edge, beside.y + edge});
    buildSplitFigures(*difference_, roomForBox(), amplification_);
}

ImVec2 SplitView::roomForBox() const
{
    float const edge = inPixels(boxMargin);
    return {static_cast<float>(cell_.width) - 2.0F * edge, static_cast<float>(cell_.height) - 2.0F * edge};
}

void SplitView::buildChoice(Session const& session, std::size_t side, ImVec2 area)
{
    constexpr float widthOfTimes = 250.0F; // points, from frame to frame, so that none is cut off
    constexpr float widthOfChoice = 150.0F;
    constexpr float leastWidth = 90.0F;
    ImGuiStyle const& style = ImGui::GetStyle();
    float const below = session.layout().hasStatus ? inPixels(static_cast<float>(ViewLayout::statusRow))
                                                   : inPixels(boxMargin);
    // No more than half of a picture is covered.
    float const height = (static_cast<float>(cell_.height) - below) / 2.0F;
    float const row = ImGui::GetFrameHeight() + 2.0F * style.WindowPadding.y;
    float const width = roomForBox().x;
    if (height < row || width < inPixels(leastWidth))
        return;
    bool const isWide = width >= inPixels(widthOfTimes);
    bool const hasTimes = isWide && height >= row + style.ItemSpacing.y + ImGui::GetTextLineHeight();

    Side& shown = sides_[side];
    ImVec2 const corner = upperLeft(places_[side], area);
    ImGui::SetNextWindowPos({corner.x + inPixels(boxMargin), corner.y + below});
    ImGui::SetNextWindowSizeConstraints({hasTimes ? inPixels(widthOfTimes) : 0.0F, 0.0F},
                                        ImGui::GetIO().DisplaySize);
    beginOverlayBox(side == 0 ? "left technique" : "right technique");
    ImGui::SetNextItemWidth(std::min(inPixels(widthOfChoice), width - 2.0F * style.WindowPadding.x));
    std::string const label = std::string(isWide ? "" : "##") + (side == 0 ? "left" : "right");
    if (ImGui::BeginCombo(label.c_str(), std::string(nameOf(shown.technique)).c_str())) {
        for (TechniqueSwitch::Candidate const& candidate : session.technique.candidates()) {
            std::string const name(nameOf(candidate.technique));
            ImGuiSelectableFlags const flags = candidate.lacking.empty() ? 0 : ImGuiSelectableFlags_Disabled;
            if (ImGui::Selectable(name.c_str(), candidate.technique == shown.technique, flags))
                shown.technique = candidate.technique;
        }
        ImGui::EndCombo();
    }
    if (hasTimes)
        ImGui::Text("%.1f ms, the first %.1f ms", shown.further.count(), shown.first.count());
    ImGui::End();
}

} // namespace sgview
