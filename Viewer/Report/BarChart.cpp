#include "Viewer/Report/BarChart.h"

#include "Utilities/Strings.h"

#include <algorithm>

namespace sgview {

namespace {

// As wide as a phone: what is drawn larger elsewhere stays readable there.
constexpr double width = 400.0;
constexpr double goalHeight = 26.0;
constexpr double rowHeight = 46.0;
constexpr double textBaseline = 16.0;
constexpr double barTop = 23.0;
constexpr double barHeight = 14.0;
constexpr double goalOverhang = 4.0;

double lengthOf(double value, double fullScale)
{
    return fullScale > 0.0 && value > 0.0 ? width * std::min(1.0, value / fullScale) : 0.0;
}

std::string describe(BarChart const& chart)
{
    std::string words;
    for (BarChart::Bar const& bar : chart.bars)
        words += bar.label + ": " + bar.text + ". ";
    return words + (chart.goal ? chart.goal->text + '.' : "");
}

void writeText(HtmlWriter& html, std::string_view kind, double x, double y, bool endsThere,
               std::string_view text)
{
    html.element("text",
                 {{"class", std::string(kind)},
                  {"x", stringize(x)},
                  {"y", stringize(y)},
                  {"text-anchor", endsThere ? "end" : "start"}},
                 text);
}

void writeRow(HtmlWriter& html, std::string_view kind, double top, double length)
{
    html.emptyElement("rect", {{"class", std::string(kind)},
                               {"x", "0"},
                               {"y", stringize(top)},
                               {"width", stringize(length)},
                               {"height", stringize(barHeight)}});
}

void writeBar(HtmlWriter& html, BarChart::Bar const& bar, double fullScale, double top)
{
    writeText(html, "label", 0.0, top + textBaseline, false, bar.label);
    writeText(html, "value", width, top + textBaseline, true, bar.text);
    writeRow(html, "track", top + barTop, width);
    writeRow(html, bar.chosen ? "bar chosen" : "bar", top + barTop, lengthOf(bar.value, fullScale));
}

void writeGoalMark(HtmlWriter& html, double x, double top)
{
    html.emptyElement("line", {{"class", "goal"},
                               {"x1", stringize(x)},
                               {"x2", stringize(x)},
                               {"y1", stringize(top + barTop - goalOverhang)},
                               {"y2", stringize(top + barTop + barHeight + goalOverhang)}});
}

} // namespace

void BarChart::write(HtmlWriter& html) const
{
    double const top = goal ? goalHeight : 0.0;
    double const height = top + rowHeight * static_cast<double>(bars.size());
    auto const topOf = [&](std::size_t bar) { return top + rowHeight * static_cast<double>(bar); };
    auto const writeContent = [&] {
        html.element("title", {}, title);
        html.element("desc", {{"id", id + "-values"}}, describe(*this));
        for (std::size_t i = 0; i < bars.size(); ++i)
            writeBar(html, bars[i], fullScale, topOf(i));
        if (!goal)
            return;
        double const x = lengthOf(goal->value, fullScale);
        writeText(html, "label", x, textBaseline, x > width / 2.0, goal->text);
        for (std::size_t i = 0; i < bars.size(); ++i)
            writeGoalMark(html, x, topOf(i));
    };
    html.element("svg",
                 {{"id", id},
                  {"class", "chart"},
                  {"viewBox", "0 0 " + stringize(width) + ' ' + stringize(height)},
                  {"role", "img"},
                  {"aria-label", title},
                  {"aria-describedby", id + "-values"}},
                 writeContent);
}

} // namespace sgview
