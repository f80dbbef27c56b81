#include "Viewer/Commands/Commands.h"

#include "Viewer/Commands/DeviceChoice.h"
#include "Viewer/Commands/MeasuredTechnique.h"
#include "Viewer/Commands/ModelDiagnosis.h"
#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Diagnosis/CardKnowledge.h"
#include "Viewer/Diagnosis/DiagnosisFigures.h"
#include "Viewer/Diagnosis/DiagnosisJson.h"
#include "Viewer/Diagnosis/DiagnosisReport.h"
#include "Viewer/Diagnosis/DiagnosisSummary.h"
#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Scene/ModelScene.h"

#include <chrono>
#include <iostream>
#include <memory>
#include <sstream>
#include <utility>

namespace sgview {

namespace {

/// A run that died, or a model that cannot be trusted.
class DiagnosisFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

constexpr PictureSize testSize{512, 512};
constexpr std::chrono::milliseconds updateInterval{200};
constexpr std::size_t labelWidth = 20;

void requireNoDeath(std::string const& card, std::optional<DiagnosticJournal> const& journal,
                    FileLock const* lock = nullptr)
{
    if (auto const death = deadRunOn(card, journal, lock))
        throw DiagnosisFailure("the last run on this card " + inWords(*death) +
                               "; sgview diagnose --force measures all the same");
}

/// \return nothing where the stored verdict holds and no run was asked for
std::optional<SupervisedDiagnosis> runIfWanted(DiagnoseRequest const& request,
                                               OffscreenRenderer const& renderer, DiagnosticOptions& options,
                                               Progress& progress)
{
    bool const isAskedFor = request.force || request.report || request.json || request.model;
    std::string const card = cardInUse();
    if (!request.force)
        requireNoDeath(card, options.journal);
    if (!isAskedFor && !renderer.engine().isDiagnosticNeeded())
        return std::nullopt;
    auto const lock = lockOut(options.journal, progress);
    if (!request.force)
        requireNoDeath(card, options.journal, lock.get());
    if (!isAskedFor && !renderer.engine().isDiagnosticNeeded())
        return std::nullopt;
    return runDiagnostic(options, progress);
}

DiagnosticOptions optionsOf(DiagnoseRequest const& request)
{
    DiagnosticOptions options;
    options.module = request.module;
    options.journal = DiagnosticJournal::usual();
    if (request.timeLimit)
        options.timeLimit = std::chrono::seconds(*request.timeLimit);
    return options;
}

/// What a program reads there has no text for people in it.
bool writesToStandardOutput(DiagnoseRequest const& request)
{
    return isStandardOutput(request.report.value_or("")) || isStandardOutput(request.json.value_or(""));
}

void writeFiles(DiagnoseRequest const& request, SupervisedDiagnosis const& run,
                std::optional<DiagnosticJournal> const& journal)
{
    if (request.report)
        writeFile(*request.report, reportOn(run));
    if (request.json) {
        std::ostringstream text;
        writeJson(text, run, journal ? journal->read() : std::nullopt);
        writeFile(*request.json, text.str());
    }
}

void requireGoodEnd(SupervisedDiagnosis const& run)
{
    if (!run.endedWell())
        throw DiagnosisFailure("the run " + run.endInWords() +
                               "; pictures are drawn by the plain technique until a run ends well");
}

void writeLastWords(std::ostream& stream, SupervisedDiagnosis const& run)
{
    if (run.lastWords.empty())
        return;
    stream << "\nLast words of the run\n";
    for (std::string const& line : run.lastWords)
        writeEntry(stream, "", 0, line);
}

void measure(DiagnoseRequest const& request, Messages const& messages)
{
    DiagnosticOptions options = optionsOf(request);
    std::optional<SupervisedDiagnosis> run;
    {
        Progress progress = messages.begin("measuring the graphics card", updateInterval);
        OffscreenRenderer const renderer(testSize, request.module);
        run = runIfWanted(request, renderer, options, progress);
    }
    if (!run) {
        writeVerdict(std::cout, readStoredVerdict());
        std::cout << "\nIt holds for the card in use: --why tells why, --force measures anew.\n";
        return flushStandardOutput();
    }
    writeFiles(request, *run, options.journal);
    if (!writesToStandardOutput(request)) {
        writeSummary(std::cout, run->diagnosis);
        writeLastWords(std::cout, *run);
        flushStandardOutput();
    }
    requireGoodEnd(*run);
}

void writeRules(std::ostream& stream, std::vector<VerdictRule> const& rules, bool isNeeded)
{
    stream << (isNeeded ? "\nA new run is needed\n" : "\nNo new run is needed: all fits\n");
    for (VerdictRule const& rule : rules)
        writeEntry(stream, rule.subject, labelWidth, rule.finding);
}

void writeDeath(std::ostream& stream, CardKnowledge const& known)
{
    stream << "\nLast run\n";
    if (!known.death) {
        writeEntry(stream, "", 0, "none that ended badly is known of");
        return;
    }
    JournalEntry const& death = *known.death;
    if (!known.diedHere())
        writeEntry(stream, "on another card", labelWidth, death.card);
    writeEntry(stream, "end", labelWidth, inWords(death));
    writeEntry(stream, "time", labelWidth, death.time + " UTC, process " + death.process);
    writeEntry(stream, "meaning", labelWidth,
               known.diedHere()
                   ? "pictures are drawn by the plain technique, and no run is made, until sgview diagnose "
                     "--force ends well or another card or driver is in use"
                   : "what draws by that card, as windows may, draws by the plain technique; after sgview "
                     "diagnose --force it tries again");
}

void explain(DiagnoseRequest const& request, Messages const& messages)
{
    CardKnowledge known;
    {
        Progress const progress = messages.begin("asking the graphics card");
        OffscreenRenderer const renderer(testSize, request.module);
        known = knowledgeOf(renderer.engine());
    }
    std::cout << "Graphics card\n";
    writeEntry(std::cout, "in use", labelWidth, known.card);
    writeEntry(std::cout, "offers", labelWidth, inWords(known.claims));
    std::cout << '\n';
    writeVerdict(std::cout, known.stored);
    writeRules(std::cout, known.rules, known.isRunNeeded);
    writeDeath(std::cout, known);
    flushStandardOutput();
}

/// The animation that was asked for, or else the first; `none` where the model has none.
Index animationOf(Model const& model, ModelRequest const& request, Messages const& messages)
{
    if (!request.animation && !model.animations.empty())
        return 0;
    return findAnimation(model, request, messages);
}

ModelDiagnosis describe(Model const& model, Index animation, DiagnoseRequest const& request)
{
    ModelDiagnosis diagnosis;
    diagnosis.subject = request.model->file.string();
    diagnosis.moments = {ModelDiagnosis::atRest};
    if (animation != none) {
        ModelAnimation const& posing = model.animations[static_cast<std::size_t>(animation)];
        diagnosis.animation = posing.name;
        std::vector<double> const moments = request.moments.of(posing.length);
        diagnosis.moments.insert(diagnosis.moments.end(), moments.begin(), moments.end());
    }
    return diagnosis;
}

/// Seen as it fits the picture at rest, or a pose could not be told from a camera that follows.
MovingScene makeScene(Model model, Index animation)
{
    auto const scene = std::make_shared<ModelScene>(std::move(model), SceneOptions());
    scene->setView(CameraView(), testSize.width, testSize.height);
    return {scene->root(), [scene, animation](double seconds) {
                if (seconds == ModelDiagnosis::atRest)
                    scene->pose(none, 0.0);
                else
                    scene->pose(animation, seconds);
            }};
}

void diagnoseModel(DiagnoseRequest const& request, Messages const& messages)
{
    Model model = loadModel(*request.model, messages);
    for (std::string const& warning : model.warnings)
        messages.warn(warning);
    Index const animation = animationOf(model, *request.model, messages);
    ModelDiagnosis diagnosis = describe(model, animation, request);
    DiagnosticOptions options = optionsOf(request);
    std::optional<SupervisedDiagnosis> ownScene;
    {
        Progress progress = messages.begin("measuring the graphics card", updateInterval);
        OffscreenRenderer renderer(testSize, request.module);
        ownScene = runIfWanted(request, renderer, options, progress);
        if (!ownScene->endedWell())
            throw DiagnosisFailure("the driver is at fault, whatever the model: the diagnostic's own run " +
                                   ownScene->endInWords());
        progress.say("comparing techniques");
        compareInto(diagnosis, renderer, makeScene(std::move(model), animation));
    }
    writeText(std::cout, diagnosis, ownScene->diagnosis);
    flushStandardOutput();
    if (!diagnosis.suspects().empty())
        throw DiagnosisFailure("1% of the picture or more differs from the plain one: " +
                               diagnosis.suspects());
}

} // namespace

void run(DiagnoseRequest const& request, Messages const& messages)
{
    if (!chooseDevice(request.device))
        return;
    if (request.why)
        explain(request, messages);
    else if (request.model)
        diagnoseModel(request, messages);
    else
        measure(request, messages);
}

} // namespace sgview
