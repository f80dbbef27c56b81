#include "Viewer/Window/DiagnosticSection.h"

#include "Viewer/Diagnosis/DiagnosisFigures.h"
#include "Viewer/Diagnosis/DiagnosisReport.h"
#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Platform/ScreenshotName.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/LabelledBar.h"
#include "Viewer/Window/Session.h"

#include <imgui.h>

#include <utility>

namespace sgview {

namespace {

void addHeading(char const* text)
{
    ImGui::Spacing();
    ImGui::Separator();
    ImGui::TextUnformatted(text);
}

void addEntry(std::string_view label, std::string const& text)
{
    float const gap = ImGui::GetStyle().ItemSpacing.y;
    ImGui::TextDisabled("%s", std::string(label).c_str());
    ImGui::SetCursorPosY(ImGui::GetCursorPosY() - gap);
    ImGui::TextWrapped("%s", text.c_str());
}

void buildProgress(CardMeasurement const& measurement)
{
    if (measurement.isRunning()) {
        ImGui::TextWrapped("Measuring: %s.", measurement.step().c_str());
        ImGui::TextWrapped("Leave the window alone meanwhile: what it draws slows what is measured.");
    } else if (!measurement.failure().empty()) {
        ImGui::TextWrapped("No result: %s.", measurement.failure().c_str());
    }
}

void buildVerdict(Diagnosis const& diagnosis)
{
    addHeading("Verdict");
    for (Diagnosis::Ruling const& ruling : diagnosis.rulings())
        addEntry(nameOf(ruling.flag), inWords(ruling, diagnosis.verdict.has_value()));
}

/// A verdict is for windows to come; this one's technique is the person's to change.
void buildChoice(Session& session, TechniqueFlags const& verdict)
{
    Technique const best = bestTechnique(verdict);
    std::string const name(nameOf(best));
    if (best == session.technique.current()) {
        ImGui::TextWrapped("That is technique %s, which is in use.", name.c_str());
        return;
    }
    ImGui::TextWrapped("That is technique %s. In use, as before, is %s.", name.c_str(),
                       std::string(nameOf(session.technique.current())).c_str());
    if (ImGui::Button(("Use " + name).c_str()))
        session.useTechnique(best, bestReason);
}

void buildSpeed(Diagnosis const& diagnosis)
{
    addHeading("Frames per second");
    addEntry("measured with", sceneInWords(diagnosis));
    if (std::string const remark = remarkOnScene(diagnosis); !remark.empty())
        ImGui::TextWrapped("%s", remark.c_str());
    std::vector<RateFigure> const rates = rateFigures(diagnosis);
    for (RateFigure const& rate : rates) {
        addLabelledBar(std::string(nameOf(rate.step)), rate.text, rate.share);
        if (!rate.remark.empty())
            ImGui::TextWrapped("%s", rate.remark.c_str());
    }
    if (rates.empty())
        ImGui::TextUnformatted("No technique was timed.");
}

void buildDeath(CardKnowledge const& known)
{
    if (!known.diedHere())
        return;
    addHeading("Last run");
    ImGui::TextWrapped("It %s (%s UTC, process %s).", inWords(*known.death).c_str(),
                       known.death->time.c_str(), known.death->process.c_str());
    ImGui::TextWrapped("Until a run ends well, windows open with the plain technique, and measure only where "
                       "asked to.");
}

void buildKnowledge(CardKnowledge const& known)
{
    buildDeath(known);
    addHeading("Graphics card");
    addEntry("in use", known.card);
    addEntry("offers", inWords(known.claims));
    addHeading("Stored verdict");
    if (known.stored.isEmpty())
        ImGui::TextUnformatted("none");
    else
        for (auto const& [label, entry] : known.stored.entries())
            addEntry(label, entry);
    addHeading(known.isRunNeeded ? "A new run is needed" : "No new run is needed: all fits");
    for (VerdictRule const& rule : known.rules)
        addEntry(rule.subject, rule.finding);
}

} // namespace

bool DiagnosticSection::isAskedFor(Session& session)
{
    return std::exchange(session.diagnosticAskedFor, false);
}

void DiagnosticSection::build(Session& session)
{
    CardMeasurement& measurement = session.measurement;
    followResult(measurement);
    buildButtons(session);
    buildProgress(measurement);
    if (measurement.result())
        buildResult(session, *measurement.result());
    buildKnowledge(measurement.knowledge());
}

void DiagnosticSection::followResult(CardMeasurement const& measurement)
{
    if (generation_ == measurement.generation())
        return;
    generation_ = measurement.generation();
    pictures_.emplace(measurement.result()->diagnosis);
    report_.clear();
}

void DiagnosticSection::buildButtons(Session& session)
{
    CardMeasurement& measurement = session.measurement;
    ImVec2 const size{inPixels(130.0F), 0.0F};
    if (measurement.isRunning()) {
        if (ImGui::Button("Stop", size))
            measurement.cancel();
    } else if (ImGui::Button("Measure now", size)) {
        session.measureCard();
    }
    ImGui::SameLine();
    ImGui::BeginDisabled(!measurement.result());
    if (ImGui::Button("Write report", size))
        writeReport(session, *measurement.result());
    ImGui::EndDisabled();
    if (!report_.empty())
        ImGui::TextWrapped("The report is in %s.", report_.c_str());
}

void DiagnosticSection::buildResult(Session& session, SupervisedDiagnosis const& run)
{
    Diagnosis const& diagnosis = run.diagnosis;
    if (!run.endedWell())
        ImGui::TextWrapped("%s", run.ending().c_str());
    buildVerdict(diagnosis);
    if (diagnosis.verdict)
        buildChoice(session, *diagnosis.verdict);
    buildSpeed(diagnosis);
    addHeading("Pictures");
    pictures_->build();
}

void DiagnosticSection::writeReport(Session& session, SupervisedDiagnosis const& run)
{
    try {
        std::filesystem::path const file =
            screenshotFile(picturesFolder(), "sgview-diagnostic-{date}-{time}", "", localNow(), ".html");
        std::filesystem::create_directories(file.parent_path());
        writeFile(file, reportOn(run));
        report_ = file;
        session.notices.tell("report written: " + file.string());
    } catch (std::exception const& error) {
        session.notices.warn(error.what());
    }
}

} // namespace sgview
