#include "Viewer/Commands/GraphicsSummary.h"

#include "Viewer/Diagnosis/StoredVerdict.h"
#include "Viewer/Report/Json.h"

#include <algorithm>
#include <ostream>

namespace sgview {

namespace {

constexpr std::size_t indentation = 2;

void writeHead(std::ostream& stream, std::string const& head, std::string const& text)
{
    constexpr std::size_t column = 13;
    stream << head << ':' << std::string(column - 1 - head.size(), ' ') << text << '\n';
}

/// Rows of two columns, as wide as their first one needs.
void writeRows(std::ostream& stream, auto const& rows, auto const& text)
{
    std::size_t width = 0;
    for (auto const& [name, value] : rows)
        width = std::max(width, name.size());
    for (auto const& [name, value] : rows)
        stream << std::string(indentation, ' ') << name << std::string(width - name.size() + 2, ' ')
               << text(value) << '\n';
}

std::string verdictInWords(GraphicsSummary const& summary)
{
    if (summary.verdict.empty())
        return "none stored";
    return summary.verdictHolds ? "stored, for this card" : "stored, but not for this card";
}

} // namespace

void writeText(std::ostream& stream, GraphicsSummary const& summary)
{
    auto const asItIs = [](std::string const& text) { return text; };
    GraphicsReport const& card = summary.card;
    writeHead(stream, "vendor", card.vendor);
    writeHead(stream, "renderer", card.renderer);
    writeHead(stream, "version", card.version);
    writeHead(stream, "GLSL", card.shadingLanguage.empty() ? "none" : card.shadingLanguage);
    stream << "extensions:\n";
    writeRows(stream, card.extensions, [](bool offered) { return offered ? "yes" : "no"; });
    stream << "limits:\n";
    writeRows(stream, card.limits, asItIs);
    writeHead(stream, "verdict", verdictInWords(summary));
    writeRows(stream, summary.verdict, entryInWords);
    writeHead(stream, "technique", std::string(nameOf(summary.technique)));
}

void writeJson(std::ostream& stream, GraphicsSummary const& summary)
{
    GraphicsReport const& card = summary.card;
    Json json;
    json["vendor"] = card.vendor;
    json["renderer"] = card.renderer;
    json["version"] = card.version;
    json["shadingLanguage"] = card.shadingLanguage;
    json["extensions"] = Json::object();
    for (auto const& [name, offered] : card.extensions)
        json["extensions"][std::string(name)] = offered;
    json["limits"] = Json::object();
    for (auto const& [name, value] : card.limits)
        json["limits"][std::string(name)] = value;
    Json stored = Json::object();
    for (auto const& [key, value] : summary.verdict)
        stored[key] = value;
    json["verdict"] = {{"stored", stored}, {"holds", summary.verdictHolds}};
    json["technique"] = nameOf(summary.technique);
    writeLines(stream, json);
}

} // namespace sgview
