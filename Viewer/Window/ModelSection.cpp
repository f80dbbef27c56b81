#include "Viewer/Window/ModelSection.h"

#include "Viewer/Report/NumberText.h"
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
    if (!model.warnings.empty() &&
        ImGui::TreeNode("warnings", "warnings (%d)", static_cast<int>(model.warnings.size()))) {
        for (std::string const& warning : model.warnings)
            ImGui::TextWrapped("%s", warning.c_str());
        ImGui::TreePop();
    }
}

} // namespace sgview
