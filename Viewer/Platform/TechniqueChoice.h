#pragma once

#include "SceneGraph/SGRenderer.h"
#include "Viewer/Platform/Technique.h"

#include <functional>
#include <stdexcept>
#include <string>

namespace sgview {

/// A technique that cannot be used here. what() is one line and names what is missing.
class TechniqueError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A technique to draw by, and for people why.
struct ChosenTechnique {
    Technique technique = Technique::plain;
    std::string reason; ///< "asked for by --technique"
};

/// Says by which technique to draw first.
using TechniqueFinder = std::function<ChosenTechnique(SGRenderer const&)>;

// All of these need a current context.

/// The card's identity, as the renderer keeps it with a verdict: vendor / renderer / version.
[[nodiscard]] std::string cardInUse();

/// The extensions that a technique needs and the OpenGL in use has not, with commas between; empty where it
/// has them all.
[[nodiscard]] std::string lackingFor(Technique technique);

/// Why a technique cannot be used here, in one line; empty where it can.
[[nodiscard]] std::string obstacleTo(Technique technique);

/// The technique of the user's stored verdict, or the plain one where there is none that holds for the card
/// in use. Writes nothing.
[[nodiscard]] Technique storedTechnique(SGRenderer const& renderer);

/// Makes the renderer draw by a technique from now on, afresh: it forgets what it derived from scenes drawn
/// before. From then on the process's preferences are for this process alone.
/// \throws TechniqueError
void choose(SGRenderer& renderer, Technique technique);

} // namespace sgview
