#include "Tests/Frame/Technique.h"

#include "SceneGraph/SGRendererManager.h"
#include "Utilities/MemoryPrefs.h"

void switchTo(sgview::Technique technique)
{
    using Store = RogueSingleton<Prefs, PrefsFactory>;
    PrefsFactory::setMaker([] { return make_smart<MemoryPrefs>(); });
    Store::reset();
    auto const set = [](char const* key, bool value) {
        Store::getInstance().setString(key, value ? "True" : "False");
    };
    set("GL_VBO", sgview::usesVBO(technique));
    set("GL_VertexProgram", sgview::usesProgram(technique));
    set("GL_VertexShader", sgview::usesShader(technique));
    SGRendererManager::getRenderer()->readDiagnosticResults();
}
