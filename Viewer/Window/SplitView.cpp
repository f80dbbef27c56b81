#include "Viewer/Window/SplitView.h"

#include "Viewer/Platform/HostState.h"
#include "Viewer/Platform/TechniqueChoice.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/OverlayBox.h"
#include "Viewer/Window/OverlayTexts.h"
#include "Viewer/Window/PictureBlit.h"
#include "Viewer/Window/ScenePainter.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <string>

namespace sgview {

namespace {

constexpr float gap = 4.0F;          // points between pictures
constexpr float playbackRow = 64.0F; // points that the playback bar takes
constexpr std::array<int, 4> amplifications{1, 10, 50, 255};

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
    bool const hasPlayback = !session.document.scene()->model().animations.empty();
    int const bottom = hasPlayback ? static_cast<int>(inPixels(playbackRow)) : 0;
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
        prepareScene(session, {0, 0, cell_.width, cell_.height});
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
    float const edge = inPixels(12.0F);
    CameraBase const& camera = *session.document.scene()->cameraNode()->camera;
    for (std::size_t i = 0; i < sides_.size(); ++i) {
        ImVec2 const corner = upperLeft(places_[i], area);
        buildOverlayLabels(session, camera, corner);
        float const belowStatus = inPixels(52.0F);
        ImGui::SetNextWindowPos({corner.x + edge, corner.y + belowStatus});
        buildChoice(session, i);
    }
    ImVec2 const beside{upperLeft(places_[1], area).x, upperLeft(places_[2], area).y};
    ImGui::SetNextWindowPos({beside.x + edge, beside.y + edge});
    buildFigures();
}

void SplitView::buildChoice(Session const& session, std::size_t side)
{
    Side& shown = sides_[side];
    constexpr float widthOfTimes = 250.0F; // points, from frame to frame, so that none is cut off
    ImGui::SetNextWindowSizeConstraints({inPixels(widthOfTimes), 0.0F}, ImGui::GetIO().DisplaySize);
    beginOverlayBox(side == 0 ? "left technique" : "right technique");
    ImGui::SetNextItemWidth(inPixels(150.0F));
    if (ImGui::BeginCombo(side == 0 ? "left" : "right", std::string(nameOf(shown.technique)).c_str())) {
        for (TechniqueSwitch::Candidate const& candidate : session.technique.candidates()) {
            std::string const name(nameOf(candidate.technique));
            ImGuiSelectableFlags const flags = candidate.lacking.empty() ? 0 : ImGuiSelectableFlags_Disabled;
            if (ImGui::Selectable(name.c_str(), candidate.technique == shown.technique, flags))
                shown.technique = candidate.technique;
        }
        ImGui::EndCombo();
    }
    ImGui::Text("%.1f ms, the first %.1f ms", shown.further.count(), shown.first.count());
    ImGui::End();
}

void SplitView::buildFigures()
{
    beginOverlayBox("difference");
    ImGui::TextUnformatted("How they differ");
    if (difference_) {
        ImGui::Text("%zu of %zu pixels mismatch: %.3f%%", difference_->mismatches, difference_->pixels,
                    100.0 * difference_->share());
        ImGui::Text("largest difference: %d of 255", difference_->largest);
        ImGui::Text("where pixels match: %d of 255", difference_->largestElsewhere);
        ImGui::TextUnformatted(difference_->isTolerable()
                                   ? "Alike: the diagnostic accepts less than 1%."
                                   : "Different: the diagnostic accepts less than 1%.");
    }
    ImGui::TextDisabled("shown on the left, brighter by");
    for (int const factor : amplifications) {
        ImGui::RadioButton((std::to_string(factor) + "x").c_str(), &amplification_, factor);
        ImGui::SameLine();
    }
    ImGui::NewLine();
    ImGui::End();
}

} // namespace sgview
