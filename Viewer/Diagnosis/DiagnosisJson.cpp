#include "Viewer/Diagnosis/DiagnosisJson.h"

#include "Viewer/Report/Json.h"

#include <ostream>
#include <string_view>

namespace sgview {

namespace {

std::string_view keyOf(Diagnosis::Step step)
{
    switch (step) {
    case Diagnosis::Step::scene:
        return "scene";
    case Diagnosis::Step::plain:
        return "plain";
    case Diagnosis::Step::vbo:
        return "vbo";
    case Diagnosis::Step::base:
        return "base";
    case Diagnosis::Step::program:
        return "program";
    case Diagnosis::Step::shader:
        return "shader";
    }
    return "unknown";
}

std::string_view keyOf(Diagnosis::View view)
{
    switch (view) {
    case Diagnosis::View::reference:
        return "reference";
    case Diagnosis::View::programAtRest:
        return "programAtRest";
    case Diagnosis::View::programBent:
        return "programBent";
    case Diagnosis::View::programCheck:
        return "programCheck";
    case Diagnosis::View::shaderAtRest:
        return "shaderAtRest";
    case Diagnosis::View::shaderBent:
        return "shaderBent";
    case Diagnosis::View::shaderCheck:
        return "shaderCheck";
    }
    return "unknown";
}

std::string_view keyOf(Diagnosis::Flag flag)
{
    switch (flag) {
    case Diagnosis::Flag::vbo:
        return "vbo";
    case Diagnosis::Flag::vertexProgram:
        return "vertexProgram";
    case Diagnosis::Flag::vertexShader:
        return "vertexShader";
    }
    return "unknown";
}

Json asJson(std::optional<TechniqueFlags> const& flags)
{
    if (!flags)
        return {};
    return {
        {"vbo", flags->vbo}, {"vertexProgram", flags->vertexProgram}, {"vertexShader", flags->vertexShader}};
}

Json asJson(Diagnosis::TimeTest const& test)
{
    return {{"step", keyOf(test.step)},
            {"surfaces", test.surfaces},
            {"framesPerSecond", test.rate},
            {"bailedOut", test.bailedOut}};
}

Json asJson(Diagnosis::Image const& image)
{
    constexpr std::size_t components = 4;
    constexpr int full = 255;
    int white = 0;
    std::vector<std::uint8_t> const& pixels = image.picture.pixels;
    for (std::size_t i = 0; i < pixels.size(); i += components)
        white += pixels[i] == full && pixels[i + 1] == full && pixels[i + 2] == full ? 1 : 0;
    return {{"view", keyOf(image.view)},
            {"white", white},
            {"nonWhite", static_cast<int>(pixels.size() / components) - white}};
}

Json asJson(Diagnosis::Comparison const& comparison)
{
    return {{"a", keyOf(comparison.a)},
            {"b", keyOf(comparison.b)},
            {"mismatch", comparison.mismatch},
            {"mustDiffer", comparison.mustDiffer},
            {"passed", comparison.passed()}};
}

Json asJson(Diagnosis::Ruling const& ruling)
{
    return {{"flag", keyOf(ruling.flag)}, {"granted", ruling.granted}, {"reason", ruling.reason}};
}

Json asJson(std::optional<JournalEntry> const& journal)
{
    if (!journal)
        return {};
    return {{"card", journal->card},
            {"step", journal->step},
            {"process", journal->process},
            {"time", journal->time},
            {"end", journal->end}};
}

template <typename Range>
Json listOf(Range const& range)
{
    Json list = Json::array();
    for (auto const& item : range)
        list.push_back(asJson(item));
    return list;
}

} // namespace

void writeJson(std::ostream& stream, SupervisedDiagnosis const& run,
               std::optional<JournalEntry> const& journal)
{
    Diagnosis const& diagnosis = run.diagnosis;
    Json json;
    json["card"] = diagnosis.card;
    json["outcome"] = {{"endedWell", run.endedWell()},
                       {"end", run.end},
                       {"step", run.endedWell() ? Json() : Json(run.step)},
                       {"lastWords", run.lastWords}};
    json["claims"] = asJson(diagnosis.claims);
    json["verdict"] = asJson(diagnosis.verdict);
    json["rulings"] = listOf(diagnosis.rulings());
    json["surfaces"] = diagnosis.surfaces;
    json["timeTests"] = listOf(diagnosis.timeTests);
    json["referencePixels"] = Json();
    if (diagnosis.referencePixels)
        json["referencePixels"] = {{"white", diagnosis.referencePixels->white},
                                   {"nonWhite", diagnosis.referencePixels->nonWhite}};
    json["pictures"] = listOf(diagnosis.images);
    json["comparisons"] = listOf(diagnosis.comparisons);
    json["limits"] = Json::object();
    for (Diagnosis::Limit const& limit : diagnosis.limits)
        json["limits"][limit.name] = limit.value;
    json["seconds"] = diagnosis.seconds;
    json["log"] = diagnosis.log;
    json["journal"] = asJson(journal);
    writeLines(stream, json);
}

} // namespace sgview
