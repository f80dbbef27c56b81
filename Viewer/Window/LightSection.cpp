#include "Viewer/Window/LightSection.h"

#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/Session.h"

#include <imgui.h>

#include <cmath>
#include <numbers>

namespace sgview {

namespace {

constexpr std::size_t mostLights = 8; // OpenGL offers that many everywhere
constexpr double degrees = 180.0 / std::numbers::pi;

/// From where a light shines, as a person at the camera says it.
struct Heading {
    float sideways = 0.0F; ///< degrees to the right of the viewer, 180 from behind the model
    float upwards = 0.0F;  ///< degrees above the viewer
};

Heading headingOf(Vector3 const& direction)
{
    return {static_cast<float>(std::atan2(direction.x, direction.z) * degrees),
            static_cast<float>(std::atan2(direction.y, std::hypot(direction.x, direction.z)) * degrees)};
}

Vector3 directionOf(Heading const& heading)
{
    double const sideways = static_cast<double>(heading.sideways) / degrees;
    double const upwards = static_cast<double>(heading.upwards) / degrees;
    return {std::sin(sideways) * std::cos(upwards), std::sin(upwards),
            std::cos(sideways) * std::cos(upwards)};
}

void editLight(SGLightData& light)
{
    Heading heading = headingOf(light.direction);
    ImGui::PushItemWidth(-inPixels(90.0F));
    bool turned = ImGui::SliderFloat("sideways", &heading.sideways, -180.0F, 180.0F, "%.0f degrees");
    turned |= ImGui::SliderFloat("upwards", &heading.upwards, -89.0F, 89.0F, "%.0f degrees");
    if (turned)
        light.direction = directionOf(heading);
    ImGui::ColorEdit3("ambient", &light.ambient.r, ImGuiColorEditFlags_Float);
    ImGui::ColorEdit3("diffuse", &light.diffuse.r, ImGuiColorEditFlags_Float);
    ImGui::ColorEdit3("specular", &light.specular.r, ImGuiColorEditFlags_Float);
    ImGui::PopItemWidth();
}

/// From the other side and weaker than the first, so that it is seen to be there.
SGLightData fillLight()
{
    SGLightData light;
    light.ambient = Color{0.0F, 0.0F, 0.0F, 1.0F};
    light.diffuse = Color{0.4F, 0.4F, 0.4F, 1.0F};
    light.specular = Color{0.2F, 0.2F, 0.2F, 1.0F};
    light.direction = Vector3(1.0, 0.2, 0.4);
    return light;
}

} // namespace

void LightSection::build(Session& session)
{
    if (!session.document.scene())
        return;
    std::vector<SGLightData>& lights = session.document.scene()->lights();
    for (std::size_t i = 0; i < lights.size(); ++i) {
        ImGui::PushID(static_cast<int>(i));
        bool isKept = true;
        std::string const name = "light " + std::to_string(i + 1);
        if (ImGui::CollapsingHeader(name.c_str(), &isKept, i == 0 ? ImGuiTreeNodeFlags_DefaultOpen : 0))
            editLight(lights[i]);
        ImGui::PopID();
        if (!isKept) {
            lights.erase(lights.begin() + static_cast<std::ptrdiff_t>(i));
            break;
        }
    }
    if (lights.empty())
        ImGui::TextDisabled("without a light, everything is drawn unlit");
    if (lights.size() < mostLights && ImGui::Button("add a light"))
        lights.push_back(lights.empty() ? headLight() : fillLight());
    if (lights.size() < mostLights)
        ImGui::SameLine();
    if (ImGui::Button("as at first"))
        lights = {headLight()};
}

} // namespace sgview
