#include "Viewer/Commands/ModelDiagnosis.h"

#include "Viewer/Diagnosis/DiagnosisSummary.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Report/NumberText.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <ostream>

namespace sgview {

namespace {

using Verdict = TechniqueResult::Verdict;

constexpr double noticeable = PictureDifference::toleratedShare;

/// What the diagnostic's own scene says of vertex programs on this driver.
enum class OwnScene { right, wrong, untried };

OwnScene judge(Diagnosis const& diagnosis)
{
    if (diagnosis.comparisons.empty())
        return OwnScene::untried;
    return std::ranges::all_of(diagnosis.comparisons, &Diagnosis::Comparison::passed) ? OwnScene::right
                                                                                      : OwnScene::wrong;
}

std::string inWords(OwnScene ownScene)
{
    switch (ownScene) {
    case OwnScene::right:
        return "drawn right by the vertex program";
    case OwnScene::wrong:
        return "drawn wrong by the vertex program";
    case OwnScene::untried:
        return "not drawn by the vertex program";
    }
    return {};
}

bool isSuspect(TechniqueResult const& result)
{
    return result.verdict() == Verdict::different;
}

std::string conclude(ModelDiagnosis const& model, OwnScene ownScene)
{
    std::string const suspects = model.suspects();
    bool const programIsSuspect = std::ranges::any_of(model.results, [](TechniqueResult const& result) {
        return isSuspect(result) && usesProgram(result.technique);
    });
    if (suspects.empty())
        return ownScene == OwnScene::wrong
                   ? "The driver is at fault, not the file: it draws the diagnostic's own scene wrong, "
                     "though not this model."
                   : "Every technique draws the model as the plain one does: if the picture is wrong all the "
                     "same, it is the file, or how it is imported.";
    if (programIsSuspect && ownScene == OwnScene::wrong)
        return "Likely the driver: the vertex program draws the diagnostic's own scene wrong as well.";
    if (programIsSuspect && ownScene == OwnScene::right)
        return "Likely the file, or how it is drawn, and not the driver: the vertex program draws the "
               "diagnostic's own scene right.";
    return "The driver or the file: the diagnostic's own scene was not tried by " + suspects +
           ". If sgview compare --demo shows the same, it is the driver.";
}

std::vector<std::string> rowOf(TechniqueResult const& result, double bending)
{
    std::string const name(nameOf(result.technique));
    if (result.verdict() == Verdict::lacking)
        return {name, "-", "-", "-", "no " + result.lacking};
    bool const isReference = result.verdict() == Verdict::reference;
    double posed = 0.0;
    for (std::size_t i = 1; i < result.differences.size(); ++i)
        posed = std::max(posed, result.differences[i].share());
    bool const isPosed = result.differences.size() > 1;
    return {name, isReference ? "-" : shareText(result.differences.front().share()),
            isReference || !isPosed ? "-" : shareText(posed), isPosed ? shareText(bending) : "-",
            std::string(nameOf(result.verdict()))};
}

void writeTable(std::ostream& stream, ModelDiagnosis const& model)
{
    constexpr std::array widths{13, 10, 10, 15};
    std::vector<std::vector<std::string>> rows{{"technique", "at rest", "posed", "posed | rest", "verdict"}};
    for (std::size_t i = 0; i < model.results.size(); ++i)
        rows.push_back(rowOf(model.results[i], model.bending[i]));
    for (std::vector<std::string> const& row : rows) {
        stream << std::left << std::setw(widths[0]) << row[0] << std::right;
        for (std::size_t i = 1; i < widths.size(); ++i)
            stream << std::setw(widths[i]) << row[i];
        stream << "  " << row.back() << '\n';
    }
}

} // namespace

std::string ModelDiagnosis::suspects() const
{
    std::string list;
    for (TechniqueResult const& result : results)
        if (isSuspect(result))
            list += (list.empty() ? "" : ", ") + std::string(nameOf(result.technique));
    return list;
}

void compareInto(ModelDiagnosis& diagnosis, OffscreenRenderer& renderer, MovingScene const& scene)
{
    std::optional<Picture> rest;
    diagnosis.bending.assign(allTechniques.size(), 0.0);
    diagnosis.results = compareTechniques(
        renderer, scene, diagnosis.moments,
        [&](Technique technique, std::size_t moment, Picture const& picture, Picture const& plain) {
            if (!rest)
                rest = plain;
            if (moment == 0)
                return;
            double& bending = diagnosis.bending[static_cast<std::size_t>(technique)];
            bending = std::max(bending, measureDifference(picture, *rest).share());
        });
}

void writeText(std::ostream& stream, ModelDiagnosis const& model, Diagnosis const& ownScene)
{
    constexpr std::size_t labelWidth = 18;
    constexpr std::size_t programRuling = 1;
    OwnScene const judgement = judge(ownScene);
    stream << "Model\n";
    writeEntry(stream, "file", labelWidth, oneLine(model.subject));
    writeEntry(stream, "animation", labelWidth, model.animation ? oneLine(*model.animation) : "none");
    writeEntry(stream, "graphics card", labelWidth, ownScene.card);
    stream << "\nPixels that mismatch with the plain technique\n";
    writeTable(stream, model);
    if (model.moments.size() > 1 && model.bending.front() < noticeable)
        stream
            << "The animation hardly moves what is seen: whether bones bend rightly, this does not tell.\n";
    stream << "\nDiagnostic's own scene\n";
    std::string const untried =
        judgement == OwnScene::untried ? ", " + ownScene.rulings()[programRuling].reason : "";
    writeEntry(stream, "judged", labelWidth, inWords(judgement) + untried);
    for (Diagnosis::Comparison const& comparison : ownScene.comparisons)
        writeEntry(stream, shareText(comparison.mismatch), labelWidth,
                   std::string(nameOf(comparison.b)) + " | " + std::string(nameOf(comparison.a)) + ": " +
                       (comparison.passed() ? "good" : "bad"));
    stream << "\nConclusion\n";
    writeEntry(stream, "", 0, conclude(model, judgement));
}

} // namespace sgview
