#include "Viewer/Window/MaterialSection.h"

#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/Session.h"

#include <imgui.h>

#include <algorithm>

namespace sgview {

namespace {

std::string nameOf(Model const& model, std::size_t material)
{
    std::string const& name = model.materials[material].name;
    return name.empty() ? "material " + std::to_string(material) : name;
}

bool editColor(char const* label, Color& color)
{
    return ImGui::ColorEdit3(label, &color.r, ImGuiColorEditFlags_Float);
}

/// \return whether anything has changed
bool editLook(MaterialLook& look)
{
    Material& material = look.material;
    ImGui::PushItemWidth(-inPixels(90.0F));
    bool changed = editColor("ambient", material.ambient);
    changed |= editColor("diffuse", material.diffuse);
    changed |= editColor("specular", material.specular);
    changed |= editColor("emissive", material.emissive);
    constexpr float mostShininess = 128.0F;
    changed |= ImGui::SliderFloat("shininess", &material.shininess, 0.0F, mostShininess, "%.1f",
                                  ImGuiSliderFlags_AlwaysClamp);
    changed |=
        ImGui::SliderFloat("opacity", &material.diffuse.a, 0.0F, 1.0F, "%.2f", ImGuiSliderFlags_AlwaysClamp);
    ImGui::PopItemWidth();
    changed |= ImGui::Checkbox("blending", &look.blending);
    ImGui::SameLine();
    changed |= ImGui::Checkbox("unlit", &look.unlit);
    if (!look.blending && material.diffuse.a < 1.0F)
        ImGui::TextDisabled("opacity shows with blending only");
    return changed;
}

} // namespace

std::vector<std::string> texturesInWords(Model const& model, std::size_t material)
{
    std::vector<std::string> lines;
    for (ModelTexture const& texture : model.materials[material].textures) {
        if (texture.image == none)
            continue;
        ModelImage const& image = model.images[static_cast<std::size_t>(texture.image)];
        lines.push_back("texture: " + (image.name.empty() ? "embedded" : image.name) + ", " +
                        std::to_string(image.width) + " x " + std::to_string(image.height));
    }
    return lines;
}

void MaterialSection::build(Session& session)
{
    SceneAppearance* const appearance = session.document.appearance();
    if (!appearance || appearance->materials().size() == 0)
        return;
    Model const& model = session.document.scene()->model();
    MaterialEdits& materials = appearance->materials();
    chosen_ = std::min(chosen_, materials.size() - 1);
    ImGui::SetNextItemWidth(-1.0F);
    if (ImGui::BeginCombo("##material", nameOf(model, chosen_).c_str())) {
        for (std::size_t i = 0; i < materials.size(); ++i) {
            ImGui::PushID(static_cast<int>(i));
            std::string const name = nameOf(model, i) + (materials.isChanged(i) ? " (changed)" : "");
            if (ImGui::Selectable(name.c_str(), i == chosen_))
                chosen_ = i;
            ImGui::PopID();
        }
        ImGui::EndCombo();
    }
    for (std::string const& line : texturesInWords(model, chosen_))
        ImGui::TextWrapped("%s", line.c_str());
    MaterialLook look = materials.look(chosen_);
    if (editLook(look))
        materials.edit(chosen_, look);
    if (materials.isChanged(chosen_) && ImGui::Button("as in the file"))
        materials.reset(chosen_);
}

} // namespace sgview
