#include "Viewer/Window/Panel.h"

#include "Viewer/Window/DiagnosticSection.h"
#include "Viewer/Window/DisplaySection.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/LightSection.h"
#include "Viewer/Window/MaterialSection.h"
#include "Viewer/Window/ModelSection.h"
#include "Viewer/Window/PartSection.h"
#include "Viewer/Window/TechniqueSection.h"
#include "Viewer/Window/TimingSection.h"

#include <imgui.h>

namespace sgview {

namespace {

/// A section that has just opened is scrolled past what is known of its height one frame later.
constexpr int framesToSettle = 2;

} // namespace

Panel::Panel()
{
    sections_.push_back(std::make_unique<ModelSection>());
    sections_.push_back(std::make_unique<DisplaySection>());
    sections_.push_back(std::make_unique<TechniqueSection>());
    sections_.push_back(std::make_unique<DiagnosticSection>());
    sections_.push_back(std::make_unique<TimingSection>());
    sections_.push_back(std::make_unique<PartSection>());
    sections_.push_back(std::make_unique<MaterialSection>());
    sections_.push_back(std::make_unique<LightSection>());
}

void Panel::build(Session& session)
{
    ImGuiIO const& io = ImGui::GetIO();
    ImGui::SetNextWindowPos({io.DisplaySize.x - inPixels(width), 0.0F});
    ImGui::SetNextWindowSize({inPixels(width), io.DisplaySize.y});
    ImGui::Begin("panel", nullptr,
                 ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoResize | ImGuiWindowFlags_NoMove |
                     ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoBringToFrontOnFocus);
    for (auto const& section : sections_) {
        if (section->isAskedFor(session)) {
            ImGui::SetNextItemOpen(true);
            wanted_ = section.get();
            framesToBring_ = framesToSettle;
        }
        bringIntoView(*section);
        ImGuiTreeNodeFlags const flags = section->isOpenAtFirst() ? ImGuiTreeNodeFlags_DefaultOpen : 0;
        if (!ImGui::CollapsingHeader(section->title(), flags))
            continue;
        ImGui::PushID(section->title());
        ImGui::Indent();
        section->build(session);
        ImGui::Unindent();
        ImGui::Spacing();
        ImGui::PopID();
    }
    ImGui::End();
}

void Panel::bringIntoView(PanelSection const& section)
{
    if (wanted_ != &section || framesToBring_ == 0)
        return;
    ImGui::SetScrollHereY(0.0F);
    --framesToBring_;
}

} // namespace sgview
