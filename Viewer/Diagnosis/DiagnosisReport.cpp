#include "Viewer/Diagnosis/DiagnosisReport.h"

#include "Viewer/Diagnosis/DiagnosisReportPictures.h"
#include "Viewer/Diagnosis/DiagnosisReportSpeed.h"
#include "Viewer/Diagnosis/DiagnosisReportStyle.h"
#include "Viewer/Report/HtmlWriter.h"
#include "Viewer/Report/NumberText.h"
#include "Viewer/Report/UtcTime.h"

#include <algorithm>
#include <sstream>

namespace sgview {

namespace {

using Flag = Diagnosis::Flag;
using Moment = std::chrono::system_clock::time_point;

bool holds(TechniqueFlags const& flags, Flag flag)
{
    switch (flag) {
    case Flag::vbo:
        return flags.vbo;
    case Flag::vertexProgram:
        return flags.vertexProgram;
    case Flag::vertexShader:
        return flags.vertexShader;
    }
    return false;
}

/// "buffer objects and vertex program", or `none`.
std::string namesOf(TechniqueFlags const& flags, std::string_view none)
{
    std::string names;
    for (Flag const flag : {Flag::vbo, Flag::vertexProgram, Flag::vertexShader})
        if (holds(flags, flag))
            names += (names.empty() ? "" : " and ") + std::string(nameOf(flag));
    return names.empty() ? std::string(none) : names;
}

std::string headline(std::optional<TechniqueFlags> const& verdict)
{
    if (!verdict)
        return "No verdict: the run did not end well";
    return "Drawn by " + namesOf(*verdict, "plain OpenGL alone");
}

template <typename Content>
void writeSection(HtmlWriter& html, std::string const& id, std::string_view heading, Content const& content)
{
    html.element("section", {{"aria-labelledby", id}}, [&] {
        html.element("h2", {{"id", id}}, heading);
        content();
    });
}

void writeHead(HtmlWriter& html)
{
    html.element("head", {}, [&] {
        html.emptyElement("meta", {{"charset", "utf-8"}});
        // Whatever a driver's texts hold: the page loads nothing and runs nothing.
        html.emptyElement("meta",
                          {{"http-equiv", "Content-Security-Policy"},
                           {"content", "default-src 'none'; img-src data:; style-src 'unsafe-inline'"}});
        html.emptyElement("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
        html.emptyElement("meta", {{"name", "color-scheme"}, {"content", "light dark"}});
        html.element("title", {}, "Graphics diagnostic");
        html.element("style", {}, diagnosisReportStyle);
    });
}

void writeEnding(HtmlWriter& html, Diagnosis const& diagnosis, std::string_view ending)
{
    bool const brokeOff = !diagnosis.verdict && !diagnosis.log.empty();
    if (ending.empty() && !brokeOff)
        return;
    html.element("div", {{"class", "ending"}, {"role", "note"}}, [&] {
        if (!ending.empty())
            html.element("p", {}, ending);
        if (brokeOff)
            html.element("p", {}, "The log ends with: " + diagnosis.log.back());
    });
}

std::string comparisonsText(std::vector<Diagnosis::Comparison> const& comparisons)
{
    auto const passed = std::ranges::count_if(comparisons, &Diagnosis::Comparison::passed);
    if (comparisons.empty())
        return "none";
    return std::to_string(passed) + " of " + std::to_string(comparisons.size()) + " right";
}

void writeKeyFigures(HtmlWriter& html, Diagnosis const& diagnosis)
{
    html.element("dl", {{"class", "figures"}}, [&] {
        auto const write = [&](std::string_view name, std::string_view value) {
            html.element("dt", {}, name);
            html.element("dd", {}, value);
        };
        write("Surfaces in the test scene", countText(diagnosis.surfaces));
        write("Pictures compared", comparisonsText(diagnosis.comparisons));
        if (diagnosis.verdict)
            write("Time taken", measureText(diagnosis.seconds) + " s");
    });
}

void writeOrigin(HtmlWriter& html, Moment written)
{
    std::string const time = utcText(written);
    html.element("p", {{"class", "muted"}}, [&] {
        html.text("Written by sgview " SG_VERSION " on ");
        html.element("time", {{"datetime", time + "Z"}}, time + " UTC");
    });
}

void writeHeader(HtmlWriter& html, Diagnosis const& diagnosis, std::string_view ending, Moment written)
{
    html.element("header", {}, [&] {
        html.element("h1", {}, [&] {
            html.element("span", {}, "Graphics diagnostic ");
            html.text(headline(diagnosis.verdict));
        });
        html.element("p", {{"class", "card"}}, [&] {
            html.element("bdi", {}, diagnosis.card.empty() ? "The card is not known." : diagnosis.card);
        });
        writeOrigin(html, written);
        writeEnding(html, diagnosis, ending);
        writeKeyFigures(html, diagnosis);
    });
}

void writeRuling(HtmlWriter& html, Diagnosis::Ruling const& ruling, bool decided)
{
    html.element("li", {}, [&] {
        html.element("h3", {}, [&] {
            html.element("span", {{"class", "name"}}, nameOf(ruling.flag));
            html.element("span", {{"class", ruling.granted ? "good" : "off"}}, [&] {
                html.element("span", {{"aria-hidden", "true"}}, ruling.granted ? "● " : "○ ");
                html.text(!decided ? "undecided" : ruling.granted ? "on" : "off");
            });
        });
        html.element("p", {}, ruling.reason);
    });
}

void writeLimits(HtmlWriter& html, std::vector<Diagnosis::Limit> const& limits)
{
    if (limits.empty())
        return;
    html.element("table", {{"class", "limits"}}, [&] {
        html.element("caption", {}, "Limits of vertex programs, as the driver states them");
        html.element("thead", {}, [&] {
            html.element("tr", {}, [&] {
                html.element("th", {{"scope", "col"}}, "Limit");
                html.element("th", {{"scope", "col"}, {"class", "number"}}, "Value");
            });
        });
        html.element("tbody", {}, [&] {
            for (Diagnosis::Limit const& limit : limits) {
                html.element("tr", {}, [&] {
                    html.element("th", {{"scope", "row"}}, limit.name);
                    html.element("td", {{"class", "number"}}, countText(limit.value));
                });
            }
        });
    });
}

void writeCard(HtmlWriter& html, Diagnosis const& diagnosis)
{
    html.element("dl", {{"class", "facts"}}, [&] {
        html.element("dt", {}, "Vendor / renderer / version");
        html.element("dd", {},
                     [&] { html.element("bdi", {}, diagnosis.card.empty() ? "not known" : diagnosis.card); });
        html.element("dt", {}, "What it offers");
        html.element("dd", {},
                     diagnosis.claims ? namesOf(*diagnosis.claims, "none of the techniques") : "not known");
    });
    writeLimits(html, diagnosis.limits);
}

void writeLog(HtmlWriter& html, std::vector<std::string> const& log)
{
    html.element("details", {}, [&] {
        html.element("summary", {}, "All " + countText(static_cast<std::int64_t>(log.size())) + " lines");
        html.element("pre", {}, [&] {
            for (std::string const& line : log)
                html.text(line + '\n');
        });
    });
}

void writeMain(HtmlWriter& html, Diagnosis const& diagnosis)
{
    writeSection(html, "verdict", "Verdict", [&] {
        html.element("ul", {{"class", "rulings"}}, [&] {
            for (Diagnosis::Ruling const& ruling : diagnosis.rulings())
                writeRuling(html, ruling, diagnosis.verdict.has_value());
        });
    });
    writeSection(html, "speed", "Speed", [&] { writeSpeed(html, diagnosis); });
    writeSection(html, "pictures", "Pictures", [&] { writePictures(html, diagnosis); });
    writeSection(html, "scene", "Test scene", [&] { writeSceneGrowth(html, diagnosis); });
    writeSection(html, "card", "Card", [&] { writeCard(html, diagnosis); });
    writeSection(html, "log", "Log", [&] { writeLog(html, diagnosis.log); });
}

} // namespace

void writeReport(std::ostream& out, Diagnosis const& diagnosis, std::string_view ending, Moment written)
{
    HtmlWriter html(out);
    html.element("html", {{"lang", "en"}}, [&] {
        writeHead(html);
        html.element("body", {}, [&] {
            writeHeader(html, diagnosis, ending, written);
            html.element("main", {}, [&] { writeMain(html, diagnosis); });
            html.element("footer", {}, "Figures are rounded here; the log has them as they were measured.");
        });
    });
}

std::string reportOn(SupervisedDiagnosis const& run)
{
    std::ostringstream page;
    writeReport(page, run.diagnosis, run.ending(), std::chrono::system_clock::now());
    return page.str();
}

} // namespace sgview
