#include "Viewer/Platform/TechniqueChoice.h"

#include "SceneGraph/SGObject.h"
#include "Utilities/AssetManager.h"
#include "Utilities/MemoryPrefs.h"
#include "Utilities/Strings.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace sgview {

namespace {

using Preferences = RogueSingleton<Prefs, PrefsFactory>;

// Where the renderer keeps its verdict.
constexpr char const* cardKey = "GL_CARD";
constexpr char const* vboKey = "GL_VBO";
constexpr char const* programKey = "GL_VertexProgram";
constexpr char const* shaderKey = "GL_VertexShader";

/// All records of the renderer's hang under keys that start so.
constexpr char const* recordPrefix = "GL";

std::string textOf(GLenum name)
{
    auto const* const text = reinterpret_cast<char const*>(glGetString(name));
    return text ? text : "";
}

bool isStoredAsTrue(char const* key)
{
    std::string const text = Preferences::getInstance().getString(key);
    return text == "True" || text == "true" || text == "TRUE";
}

/// In a store that ends with the process.
void storeVerdict(Technique technique)
{
    PrefsFactory::setMaker([] { return smart_ptr<Prefs>(make_smart<MemoryPrefs>()); });
    Preferences::reset();
    Prefs& preferences = Preferences::getInstance();
    auto const set = [&](char const* key, bool value) {
        preferences.setString(key, value ? "True" : "False");
    };
    set(vboKey, usesVBO(technique));
    set(programKey, usesProgram(technique));
    set(shaderKey, usesShader(technique));
    preferences.setString(cardKey, cardInUse());
}

} // namespace

std::string cardInUse()
{
    return textOf(GL_VENDOR) + " / " + textOf(GL_RENDERER) + " / " + textOf(GL_VERSION);
}

std::string lackingFor(Technique technique)
{
    std::vector<std::string> const offered = string_split(textOf(GL_EXTENSIONS), ' ');
    std::string lacking;
    for (std::string_view const extension : extensionsFor(technique))
        if (std::ranges::find(offered, extension) == offered.end())
            lacking += (lacking.empty() ? "" : ", ") + std::string(extension);
    return lacking;
}

std::string obstacleTo(Technique technique)
{
    std::string const subject = "technique " + std::string(nameOf(technique)) + ": ";
    if (std::string const lacking = lackingFor(technique); !lacking.empty())
        return subject + "the OpenGL in use lacks " + lacking;
    try {
        for (std::string_view const asset : assetsFor(technique))
            static_cast<void>(AssetManager::getInstance().findFile(std::string(asset)));
    } catch (AssetError const& error) {
        return subject + error.what();
    }
    return {};
}

Technique storedTechnique(SGRenderer const& renderer)
{
    if (renderer.isDiagnosticNeeded())
        return Technique::plain;
    return techniqueWith(isStoredAsTrue(vboKey), isStoredAsTrue(programKey), isStoredAsTrue(shaderKey));
}

void choose(SGRenderer& renderer, Technique technique)
{
    if (std::string const obstacle = obstacleTo(technique); !obstacle.empty())
        throw TechniqueError(obstacle);
    SGObject::removeExtraDataEverywhere(recordPrefix);
    storeVerdict(technique);
    renderer.readDiagnosticResults();
}

} // namespace sgview
