#include "OpenGLRenderer/DiagnosticPrefs.h"

#include "OpenGLRenderer/DiagnosticCard.h"
#include "Utilities/Log.h"
#include "Utilities/Prefs.h"

namespace {

Prefs& prefs()
{
    return RogueSingleton<Prefs, PrefsFactory>::getInstance();
}

bool readFlag(std::string const& key)
{
    return Diagnostic::isStringTrue(prefs().getString(key));
}

void writeFlag(std::string const& key, bool flag)
{
    prefs().setString(key, flag ? "True" : "False");
}

char const* yesOrNo(bool flag)
{
    return flag ? "Yes" : "No";
}

} // namespace

bool Diagnostic::isStringTrue(std::string_view text)
{
    return text == "True" || text == "true" || text == "TRUE";
}

bool Diagnostic::isStringFalse(std::string_view text)
{
    return text == "False" || text == "false" || text == "FALSE";
}

Capabilities Diagnostic::readPrefs()
{
    Capabilities caps;
    caps.vbo = readFlag(vboKey);
    caps.vertexProgram = readFlag(vertexProgramKey);
    caps.vertexShader = readFlag(vertexShaderKey);
    return caps;
}

void Diagnostic::writePrefs(Capabilities const& caps)
{
    // A part of this verdict and a part of the last one would be nobody's.
    Prefs::Batch verdict(prefs());
    writeFlag(vboKey, caps.vbo);
    writeFlag(vertexProgramKey, caps.vertexProgram);
    writeFlag(vertexShaderKey, caps.vertexShader);
    prefs().setString(cardKey, getCard());
    verdict.commit();
}

void Diagnostic::logCaps(Capabilities const& caps, std::string_view title)
{
    static LogChannel const channel("opengl");
    channel.write(title, ": VBO = ", yesOrNo(caps.vbo), ", vertex program = ", yesOrNo(caps.vertexProgram),
                  ", vertex shader = ", yesOrNo(caps.vertexShader));
}
