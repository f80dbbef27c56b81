#include "Viewer/Diagnosis/CardKnowledge.h"

#include "Utilities/Prefs.h"
#include "Viewer/Diagnosis/DiagnosticGate.h"
#include "Viewer/Platform/TechniqueChoice.h"

namespace sgview {

CardKnowledge knowledgeOf(SGRenderer const& renderer)
{
    // A technique that was chosen meanwhile lies in preferences of its own.
    PrefsFactory::setMaker({});
    RogueSingleton<Prefs, PrefsFactory>::reset();
    CardKnowledge known;
    known.card = cardInUse();
    known.stored = readStoredVerdict();
    known.isRunNeeded = renderer.isDiagnosticNeeded();
    known.claims = claimsAccordingTo(renderer);
    known.rules = judge(known.stored, known.card, known.claims);
    known.death = lastDeadRun(DiagnosticJournal::usual());
    return known;
}

} // namespace sgview
