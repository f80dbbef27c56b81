#include "Viewer/Window/ComparedPictures.h"

#include "Viewer/Diagnosis/DiagnosisFigures.h"
#include "Viewer/Report/NumberText.h"
#include "Viewer/Window/GuiStyle.h"

#include <map>
#include <optional>

namespace sgview {

namespace {

using Texture = std::shared_ptr<PictureTexture const>;

constexpr float wholeSide = 512.0F; // points

std::string differenceName()
{
    return "difference, " + std::to_string(differenceAmplification) + " times as bright";
}

/// A small picture that is seen whole where the pointer rests on it.
void addPicture(Texture const& texture, std::string const& name, float side)
{
    if (!texture) {
        ImGui::Dummy({side, side});
        return;
    }
    ImGui::Image(texture->id(), {side, side});
    if (!ImGui::IsItemHovered())
        return;
    ImGui::BeginTooltip();
    ImGui::TextUnformatted(name.c_str());
    ImGui::Image(texture->id(), {inPixels(wholeSide), inPixels(wholeSide)});
    ImGui::EndTooltip();
}

} // namespace

ComparedPictures::ComparedPictures(Diagnosis const& diagnosis)
{
    std::map<Diagnosis::View, Texture> textures;
    for (Diagnosis::Image const& image : diagnosis.images)
        textures.emplace(image.view, std::make_shared<PictureTexture>(image.picture));
    for (Diagnosis::Comparison const& comparison : diagnosis.comparisons) {
        std::optional<Picture> const difference = differenceOf(diagnosis, comparison);
        entries_.push_back({comparison, textures[comparison.b], textures[comparison.a],
                            difference ? std::make_shared<PictureTexture>(*difference) : nullptr});
    }
}

void ComparedPictures::build() const
{
    if (entries_.empty()) {
        ImGui::TextWrapped("None were compared.");
        return;
    }
    ImGui::TextWrapped("In pairs, with their %s. Point at one to see it whole.", differenceName().c_str());
    for (Entry const& entry : entries_) {
        Diagnosis::Comparison const& comparison = entry.comparison;
        float const gap = ImGui::GetStyle().ItemSpacing.x;
        float const side = (ImGui::GetContentRegionAvail().x - 2.0F * gap) / 3.0F;
        ImGui::Spacing();
        ImGui::TextWrapped("%s", pairOf(comparison).c_str());
        addPicture(entry.first, std::string(nameOf(comparison.b)), side);
        ImGui::SameLine();
        addPicture(entry.second, std::string(nameOf(comparison.a)), side);
        ImGui::SameLine();
        addPicture(entry.difference, differenceName(), side);
        ImGui::TextWrapped("%s of the pixels mismatch, %s", shareText(comparison.mismatch).c_str(),
                           resultOf(comparison).c_str());
    }
}

} // namespace sgview
