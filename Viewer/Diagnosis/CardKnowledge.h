#pragma once

#include "SceneGraph/SGRenderer.h"
#include "Viewer/Diagnosis/DiagnosticJournal.h"
#include "Viewer/Diagnosis/StoredVerdict.h"

#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// What is known of the card in use without a run of the graphics diagnostic, and whether one is needed.
struct CardKnowledge {
    std::string card; ///< vendor / renderer / version
    TechniqueFlags claims;
    StoredVerdict stored;
    bool isRunNeeded = true;
    std::vector<VerdictRule> rules;    ///< by which one is, or is not
    std::optional<JournalEntry> death; ///< of the last run, whatever card that was on

    [[nodiscard]] bool diedHere() const { return death && death->card == card; }
};

/// Needs a current context. The process's preferences are the user's afterwards, read anew.
[[nodiscard]] CardKnowledge knowledgeOf(SGRenderer const& renderer);

} // namespace sgview
