#include "Viewer/Diagnosis/DiagnosisFigures.h"

#include "Viewer/Platform/PictureDifference.h"
#include "Viewer/Report/NumberText.h"

#include <algorithm>
#include <utility>

namespace sgview {

std::vector<RateFigure> rateFigures(Diagnosis const& diagnosis)
{
    using Step = Diagnosis::Step;
    std::vector<Diagnosis::TimeTest const*> tests;
    double highest = 0.0;
    for (Step const step : {Step::plain, Step::vbo, Step::base, Step::program, Step::shader}) {
        if (Diagnosis::TimeTest const* const test = diagnosis.timeTest(step)) {
            tests.push_back(test);
            highest = std::max(highest, test->rate);
        }
    }
    std::vector<RateFigure> figures;
    for (Diagnosis::TimeTest const* const test : tests)
        figures.push_back({test->step, highest > 0.0 ? test->rate / highest : 0.0,
                           test->bailedOut ? "-" : measureText(test->rate),
                           test->bailedOut ? "first frame took over a second" : ""});
    return figures;
}

std::string pairOf(Diagnosis::Comparison const& comparison)
{
    return std::string(nameOf(comparison.b)) + " | " + std::string(nameOf(comparison.a));
}

std::string resultOf(Diagnosis::Comparison const& comparison)
{
    return std::string(comparison.mustDiffer ? "1% or more" : "under 1%") +
           " wanted: " + (comparison.passed() ? "good" : "bad");
}

std::optional<Picture> differenceOf(Diagnosis const& diagnosis, Diagnosis::Comparison const& comparison)
{
    Picture const* const a = diagnosis.image(comparison.a);
    Picture const* const b = diagnosis.image(comparison.b);
    if (!a || !b || a->size != b->size)
        return std::nullopt;
    return amplifiedDifference(*a, *b, differenceAmplification);
}

std::string inWords(Diagnosis::Ruling const& ruling, bool isDecided)
{
    return (isDecided ? (ruling.granted ? "on, " : "off, ") : "") + ruling.reason;
}

std::string inWords(TechniqueFlags const& flags)
{
    std::string list;
    for (auto const& [flag, isSet] : {std::pair(Diagnosis::Flag::vbo, flags.vbo),
                                      std::pair(Diagnosis::Flag::vertexProgram, flags.vertexProgram),
                                      std::pair(Diagnosis::Flag::vertexShader, flags.vertexShader)})
        if (isSet)
            list += (list.empty() ? "" : ", ") + std::string(nameOf(flag));
    return list.empty() ? "nothing" : list;
}

std::string sceneInWords(Diagnosis const& diagnosis)
{
    std::string const duration = diagnosis.verdict ? ", in " + measureText(diagnosis.seconds) + " s" : "";
    return std::to_string(diagnosis.surfaces) + (diagnosis.surfaces == 1 ? " surface" : " surfaces") +
           " of 10,000 vertices" + duration;
}

std::string remarkOnScene(Diagnosis const& diagnosis)
{
    return diagnosis.surfaces == 1 ? "none of it in view: the first surface stands before the camera's reach"
                                   : "";
}

Technique bestTechnique(TechniqueFlags const& verdict)
{
    return techniqueWith(verdict.vbo, verdict.vertexProgram, verdict.vertexShader);
}

} // namespace sgview
