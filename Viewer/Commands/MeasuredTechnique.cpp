#include "Viewer/Commands/MeasuredTechnique.h"

#include "Utilities/Log.h"
#include "Utilities/Prefs.h"
#include "Viewer/Diagnosis/DiagnosisFigures.h"

#include <utility>

namespace sgview {

namespace {

constexpr char const* measuring = "measuring the graphics card";

void logLine(std::string_view line)
{
    for (char const* const name : {"opengl", "error"}) {
        std::string const front = std::string(name) + ": ";
        if (line.starts_with(front))
            LogChannel(name).write(line.substr(front.size()));
    }
}

ChosenTechnique afterDeath(std::string const& end, Messages const& messages)
{
    messages.warn("drawn by the plain technique: the last run of the graphics diagnostic " + end +
                  "; sgview diagnose --why tells more, --force measures again");
    return {Technique::plain, "right on every card; the graphics diagnostic " + end};
}

ChosenTechnique asFound(Technique technique, Messages const& messages)
{
    std::string const obstacle = obstacleTo(technique);
    if (obstacle.empty())
        return {technique, bestReason};
    messages.warn("drawn by the plain technique: " + obstacle);
    return {Technique::plain, "right on every card; " + obstacle};
}

ChosenTechnique afterRun(SupervisedDiagnosis const& run, Messages const& messages)
{
    if (!run.endedWell())
        return afterDeath(run.endInWords(), messages);
    return asFound(bestTechnique(*run.diagnosis.verdict), messages);
}

} // namespace

std::unique_ptr<FileLock> lockOut(std::optional<DiagnosticJournal>& journal, Progress& progress)
{
    progress.say(waitingForOthers);
    std::unique_ptr<FileLock> lock = lockOut(journal);
    progress.say(measuring);
    RogueSingleton<Prefs, PrefsFactory>::reset();
    return lock;
}

SupervisedDiagnosis runDiagnostic(DiagnosticOptions const& options, Progress& progress)
{
    DiagnosticListener listener;
    listener.step = [&progress](std::string const& step) { progress.say("measuring the card: " + step); };
    listener.logLine = logLine;
    return superviseDiagnostic(options, {cardInUse(), videoDriverInUse()}, listener);
}

ChosenTechnique measuredTechnique(SGRenderer const& renderer,
                                  std::optional<std::filesystem::path> const& module, Progress& progress,
                                  Messages const& messages)
{
    std::optional<DiagnosticJournal> journal = DiagnosticJournal::usual();
    std::string const card = cardInUse();
    if (auto const death = deadRunOn(card, journal))
        return afterDeath(inWords(*death), messages);
    if (!renderer.isDiagnosticNeeded())
        return asFound(storedTechnique(renderer), messages);
    try {
        auto const lock = lockOut(journal, progress);
        if (auto const death = deadRunOn(card, journal, lock.get()))
            return afterDeath(inWords(*death), messages);
        if (!renderer.isDiagnosticNeeded())
            return asFound(storedTechnique(renderer), messages);
        DiagnosticOptions options;
        options.module = module;
        options.journal = journal;
        return afterRun(runDiagnostic(options, progress), messages);
    } catch (DiagnosticBusy const& busy) {
        messages.warn(std::string("drawn by the plain technique: ") + busy.what());
        return {Technique::plain, std::string("right on every card; ") + busy.what()};
    }
}

TechniqueFinder techniqueFinder(std::optional<Technique> asked, std::optional<std::filesystem::path> module,
                                Messages const& messages)
{
    return [asked, module = std::move(module), &messages](SGRenderer const& renderer) -> ChosenTechnique {
        if (asked)
            return {*asked, "asked for by --technique"};
        Progress progress = messages.begin(measuring);
        return measuredTechnique(renderer, module, progress, messages);
    };
}

} // namespace sgview
