#pragma once

#include "SceneGraph/SGRenderer.h"
#include "Viewer/Diagnosis/Diagnosis.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace sgview {

/// What the user's preferences hold of a verdict, word for word; empty where there is no entry.
struct StoredVerdict {
    std::string card;
    std::array<std::string, 3> flags; ///< in the order of Diagnosis::Flag

    [[nodiscard]] bool isEmpty() const;

    /// For people: labels and entries, "no entry" where there is none.
    [[nodiscard]] std::vector<std::pair<std::string, std::string>> entries() const;

    /// As the preferences have it: keys and values of those entries that are there.
    [[nodiscard]] std::vector<std::pair<std::string, std::string>> preferences() const;
};

/// What a flag's entry says, for people: "on", "off", or the entry itself where it is neither.
[[nodiscard]] std::string entryInWords(std::string const& entry);

/// As this process has read it, or does now.
[[nodiscard]] StoredVerdict readStoredVerdict();

/// What the card in use claims, as far as the renderer believes it: found out by showing the renderer
/// verdicts and asking whether they fit. The process reads its preferences anew afterwards.
[[nodiscard]] TechniqueFlags claimsAccordingTo(SGRenderer const& renderer);

/// One of the rules by which a stored verdict holds or does not.
struct VerdictRule {
    std::string subject; ///< "card", or a flag
    bool holds = false;
    std::string finding; ///< "another card", with what it was found by
};

/// The rules that a renderer asks, up to the one that settles it.
[[nodiscard]] std::vector<VerdictRule> judge(StoredVerdict const& stored, std::string const& card,
                                             TechniqueFlags const& claims);

} // namespace sgview
