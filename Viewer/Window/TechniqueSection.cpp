#include "Viewer/Window/TechniqueSection.h"

#include "Viewer/Window/Session.h"

#include <imgui.h>

namespace sgview {

void TechniqueSection::build(Session& session)
{
    Technique const current = session.technique.current();
    ImGui::TextWrapped("%s: %s.", std::string(nameOf(current)).c_str(), session.technique.reason().c_str());
    for (TechniqueSwitch::Candidate const& candidate : session.technique.candidates()) {
        std::string const name(nameOf(candidate.technique));
        if (!candidate.lacking.empty()) {
            ImGui::TextDisabled("%s: lacks %s", name.c_str(), candidate.lacking.c_str());
            continue;
        }
        if (ImGui::RadioButton(name.c_str(), candidate.technique == current))
            session.useTechnique(candidate.technique, "chosen here");
    }
}

} // namespace sgview
