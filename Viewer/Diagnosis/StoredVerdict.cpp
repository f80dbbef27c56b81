#include "Viewer/Diagnosis/StoredVerdict.h"

#include "Utilities/MemoryPrefs.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <algorithm>

namespace sgview {

namespace {

using Preferences = RogueSingleton<Prefs, PrefsFactory>;

// Where the renderer keeps its verdict.
constexpr char const* cardKey = "GL_CARD";
constexpr std::array<char const*, 3> flagKeys{"GL_VBO", "GL_VertexProgram", "GL_VertexShader"};
constexpr std::array allFlags{Diagnosis::Flag::vbo, Diagnosis::Flag::vertexProgram,
                              Diagnosis::Flag::vertexShader};

bool isTrue(std::string const& text)
{
    return text == "True" || text == "true" || text == "TRUE";
}

bool isFalse(std::string const& text)
{
    return text == "False" || text == "false" || text == "FALSE";
}

/// Preferences of our own in place of the user's.
class OtherPreferences {
public:
    OtherPreferences()
    {
        PrefsFactory::setMaker([] { return smart_ptr<Prefs>(make_smart<MemoryPrefs>()); });
        Preferences::reset();
    }
    OtherPreferences(OtherPreferences const&) = delete;
    OtherPreferences& operator=(OtherPreferences const&) = delete;
    ~OtherPreferences()
    {
        PrefsFactory::setMaker({});
        Preferences::reset();
    }
};

/// A card may well offer vertex shaders; the renderer believes none.
std::string whyUnclaimed(Diagnosis::Flag flag)
{
    return flag == Diagnosis::Flag::vertexShader
               ? "never tried, as the diagnostic leaves it out on every card"
               : "the card does not offer it";
}

VerdictRule ruleOf(Diagnosis::Flag flag, std::string const& stored, bool isClaimed)
{
    std::string const subject(nameOf(flag));
    if (!isClaimed && isTrue(stored))
        return {subject, false, "claims more than a run grants: the verdict says on; " + whyUnclaimed(flag)};
    if (!isClaimed)
        return {subject, true, "fits: " + whyUnclaimed(flag) + ", nor does the verdict grant it"};
    if (stored.empty())
        return {subject, false, "missing entry: the card offers it, and nothing is stored"};
    if (!isTrue(stored) && !isFalse(stored))
        return {subject, false, "neither spelling: '" + stored + "' is neither true nor false"};
    return {subject, true, "fits: the card offers it, and the verdict says " + entryInWords(stored)};
}

} // namespace

bool StoredVerdict::isEmpty() const
{
    return card.empty() && std::ranges::all_of(flags, &std::string::empty);
}

std::vector<std::pair<std::string, std::string>> StoredVerdict::entries() const
{
    auto const text = [](std::string const& entry) { return entry.empty() ? "no entry" : entry; };
    std::vector<std::pair<std::string, std::string>> list{{"card", text(card)}};
    for (std::size_t i = 0; i < allFlags.size(); ++i)
        list.emplace_back(nameOf(allFlags[i]), text(entryInWords(flags[i])));
    return list;
}

std::vector<std::pair<std::string, std::string>> StoredVerdict::preferences() const
{
    std::vector<std::pair<std::string, std::string>> list{{cardKey, card}};
    for (std::size_t i = 0; i < flagKeys.size(); ++i)
        list.emplace_back(flagKeys[i], flags[i]);
    std::erase_if(list, [](auto const& entry) { return entry.second.empty(); });
    return list;
}

std::string entryInWords(std::string const& entry)
{
    return isTrue(entry) ? "on" : isFalse(entry) ? "off" : entry;
}

StoredVerdict readStoredVerdict()
{
    Prefs const& preferences = Preferences::getInstance();
    StoredVerdict verdict{preferences.getString(cardKey), {}};
    for (std::size_t i = 0; i < flagKeys.size(); ++i)
        verdict.flags[i] = preferences.getString(flagKeys[i]);
    return verdict;
}

TechniqueFlags claimsAccordingTo(SGRenderer const& renderer)
{
    // A granted flag makes a new run needed exactly where the card lacks what it grants.
    OtherPreferences const others;
    Prefs& preferences = Preferences::getInstance();
    preferences.setString(cardKey, cardInUse());
    std::array<bool, 3> isClaimed{};
    for (char const* const key : flagKeys)
        preferences.setString(key, "False");
    for (std::size_t i = 0; i < flagKeys.size(); ++i) {
        preferences.setString(flagKeys[i], "True");
        isClaimed[i] = !renderer.isDiagnosticNeeded();
        preferences.setString(flagKeys[i], "False");
    }
    return {isClaimed[0], isClaimed[1], isClaimed[2]};
}

std::vector<VerdictRule> judge(StoredVerdict const& stored, std::string const& card,
                               TechniqueFlags const& claims)
{
    if (stored.card.empty())
        return {{"card", false, "missing entry: no verdict is stored"}};
    if (stored.card != card)
        return {{"card", false, "another card: the verdict is for '" + stored.card + "'"}};
    std::vector<VerdictRule> rules{{"card", true, "fits: the verdict is for the card in use"}};
    std::array const isClaimed{claims.vbo, claims.vertexProgram, claims.vertexShader};
    for (std::size_t i = 0; i < allFlags.size() && rules.back().holds; ++i)
        rules.push_back(ruleOf(allFlags[i], stored.flags[i], isClaimed[i]));
    return rules;
}

} // namespace sgview
