#include "Viewer/Window/ModelSection.h"

#include "Viewer/Report/NumberText.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/Session.h"

#include <imgui.h>

#include <array>

namespace sgview {

namespace {

void addRow(char const* name, std::string const& value)
{
    ImGui::TableNextColumn();
    ImGui::TextUnformatted(name);
    ImGui::TableNextColumn();
    ImGui::TextUnformatted(value.c_str());
}

void buildWarnings(std::vector<std::string> const& warnings)
{
    if (warnings.empty() ||
        !ImGui::TreeNodeEx("warnings", ImGuiTreeNodeFlags_DefaultOpen, "warnings (%zu)", warnings.size()))
        return;
    constexpr std::size_t few = 4; // more are scrolled through, so that what is below stays in view
    bool const isLong = warnings.size() > few;
    if (isLong)
        ImGui::BeginChild("list", {0.0F, inPixels(140.0F)});
    for (std::string const& warning : warnings)
        ImGui::TextWrapped("%s", warning.c_str());
    if (isLong)
        ImGui::EndChild();
    ImGui::TreePop();
}

} // namespace

void ModelSection::build(Session& session)
{
    Document const& document = session.document;
    if (!document.scene()) {
        ImGui::TextUnformatted("none");
        return;
    }
    Model const& model = document.scene()->model();
    ImGui::TextWrapped("%s", document.file().filename().string().c_str());
    ImGui::TextWrapped("%s", model.format.c_str());
    if (ImGui::BeginTable("counts", 2)) {
        ModelCounts const& counts = document.counts();
        std::array const rows{
            std::pair{"nodes", counts.nodes},         std::pair{"surfaces", counts.surfaces},
            std::pair{"curves", counts.curves},       std::pair{"vertices", counts.vertices},
            std::pair{"triangles", counts.triangles}, std::pair{"bones", counts.bones},
            std::pair{"textures", counts.textures},   std::pair{"animations", model.animations.size()},
        };
        for (auto const& [name, count] : rows)
            addRow(name, countText(static_cast<std::int64_t>(count)));
        ImGui::EndTable();
    }
    buildWarnings(model.warnings);
}

} // namespace sgview
