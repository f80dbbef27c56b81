#include "OpenGLRenderer/GraphicsDiagnostic.h"

#include "OpenGLRenderer/DiagnosticCard.h"
#include "OpenGLRenderer/DiagnosticPrefs.h"
#include "OpenGLRenderer/DiagnosticRun.h"
#include "Utilities/Log.h"
#include "Utilities/Prefs.h"

namespace {

std::string stored(std::string const& key)
{
    return RogueSingleton<Prefs, PrefsFactory>::getInstance().getString(key);
}

bool fits(std::string const& key, bool cardHasIt)
{
    std::string const text = stored(key);
    if (cardHasIt)
        return Diagnostic::isStringTrue(text) || Diagnostic::isStringFalse(text);
    return !Diagnostic::isStringTrue(text);
}

} // namespace

bool GraphicsDiagnostic::isDiagnosticNeeded()
{
    if (stored(Diagnostic::cardKey) != Diagnostic::getCard())
        return true;
    Capabilities const card = Diagnostic::getCardCaps();
    return !fits(Diagnostic::vboKey, card.vbo) || !fits(Diagnostic::vertexProgramKey, card.vertexProgram) ||
           !fits(Diagnostic::vertexShaderKey, card.vertexShader);
}

void GraphicsDiagnostic::runDiagnostic()
{
    DiagnosticRun().carryOut();
}

void GraphicsDiagnostic::readDiagnosticResults()
{
    static LogChannel const channel("opengl");
    channel.write("Reading graphics diagnostic results from preferences");
    Capabilities const caps = Diagnostic::readPrefs();
    Diagnostic::logCaps(caps, "Read caps");
    Diagnostic::applyCaps(caps);
}
