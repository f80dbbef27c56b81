#pragma once

#include "OpenGLRenderer/Capabilities.h"

#include <string>

/// What the OpenGL in use says of its card. Every function needs a current context.
namespace Diagnostic {

/// The card's identity: vendor, renderer and version. A new driver makes a new card.
[[nodiscard]] std::string getCard();

/// Whether the driver lists an extension.
///
/// A plain search for the name with a blank before or behind it. Drivers end every entry with a blank: the
/// last of a list that does not is not found by a name without "GL_", and the tail of a longer name is found.
/// \param name  without "GL_"
[[nodiscard]] bool hasExtension(std::string const& name);

/// Whether the card is of a family that claims vertex programs and gets them wrong.
[[nodiscard]] bool isATI8500to9250();

/// Whether ARB vertex programs may be used. Logs their limits where the driver offers them at all.
[[nodiscard]] bool tryVertexProgram();

/// What the card claims, as far as claims are believed: the vertex shader never is.
[[nodiscard]] Capabilities getCardCaps();

} // namespace Diagnostic
