#pragma once

#include "OpenGLRenderer/Capabilities.h"

#include <string>
#include <string_view>

/// The graphics diagnostic's memory: its verdict in the user's preferences.
namespace Diagnostic {

/// The keys of the preferences: the card that the verdict is for, and a flag for each technique.
inline std::string const cardKey = "GL_CARD";
inline std::string const vboKey = "GL_VBO";
inline std::string const vertexProgramKey = "GL_VertexProgram";
inline std::string const vertexShaderKey = "GL_VertexShader";

/// Whether a stored text is one of the three spellings of true, or of false. A text may be neither.
[[nodiscard]] bool isStringTrue(std::string_view text);
[[nodiscard]] bool isStringFalse(std::string_view text);

/// The stored verdict, whatever card it is for. What is missing or reads as neither true nor false is false.
[[nodiscard]] Capabilities readPrefs();

/// Stores a verdict on the card in use, whole or not at all. Needs a current context.
void writePrefs(Capabilities const& caps);

/// Logs a verdict on the "opengl" channel.
void logCaps(Capabilities const& caps, std::string_view title);

} // namespace Diagnostic
