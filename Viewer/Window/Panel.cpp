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

#include <string>
#include <utility>

namespace sgview {

namespace {

/// A section that has just opened is scrolled past what is known of its height one frame later.
constexpr int framesToSettle = 2;

constexpr char const* open = "open";
constexpr char const* folded = "folded";

std::string keyOf(PanelSection const& section)
{
    return std::string("panel.") + section.title();
}

} // namespace

Panel::Panel(smart_ptr<Prefs> memory) : memory_(std::move(memory))
{
    sections_.push_back(std::make_unique<ModelSection>());
    sections_.push_back(std::make_unique<TechniqueSection>());
    sections_.push_back(std::make_unique<DisplaySection>());
    sections_.push_back(std::make_unique<PartSection>());
    sections_.push_back(std::make_unique<MaterialSection>());
    sections_.push_back(std::make_unique<LightSection>());
    sections_.push_back(std::make_unique<DiagnosticSection>());
    sections_.push_back(std::make_unique<TimingSection>());
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
        if (!buildHeader(*section))
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

bool Panel::isOpenAtFirst(PanelSection const& section) const
{
    std::string const kept = memory_->getString(keyOf(section));
    return kept.empty() ? section.isOpenAtFirst() : kept == open;
}

bool Panel::buildHeader(PanelSection const& section)
{
    bool const isOpen = ImGui::CollapsingHeader(
        section.title(), isOpenAtFirst(section) ? ImGuiTreeNodeFlags_DefaultOpen : ImGuiTreeNodeFlags_None);
    // What a key has brought into view is not what a person wants to see always.
    if (ImGui::IsItemToggledOpen())
        memory_->setString(keyOf(section), isOpen ? open : folded);
    return isOpen;
}

void Panel::bringIntoView(PanelSection const& section)
{
    if (wanted_ != &section || framesToBring_ == 0)
        return;
    ImGui::SetScrollY(ImGui::GetCursorPosY() - ImGui::GetStyle().WindowPadding.y);
    --framesToBring_;
}

} // namespace sgview
