#include "Viewer/Diagnosis/DiagnosisReportSpeed.h"

#include "Viewer/Report/BarChart.h"
#include "Viewer/Report/NumberText.h"

#include <algorithm>
#include <cctype>
#include <span>

namespace sgview {

namespace {

using Step = Diagnosis::Step;
using TimeTest = Diagnosis::TimeTest;

constexpr double goalOfGrowth = 80.0; // frames per second

bool isOfScene(TimeTest const& test)
{
    return test.step == Step::scene;
}

bool isInUse(Step step, TechniqueFlags const& verdict)
{
    switch (step) {
    case Step::scene:
        return false;
    case Step::plain:
        return !verdict.vbo;
    case Step::vbo:
        return verdict.vbo;
    case Step::base:
        return !verdict.vertexProgram && !verdict.vertexShader;
    case Step::program:
        return verdict.vertexProgram;
    case Step::shader:
        return verdict.vertexShader;
    }
    return false;
}

std::string withCapital(std::string_view name)
{
    std::string text(name);
    text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    return text;
}

std::string resultOf(TimeTest const& test)
{
    return test.bailedOut ? "first frame over 1 s" : measureText(test.rate);
}

std::vector<BarChart::Bar> barsOf(Diagnosis const& diagnosis, std::span<Step const> steps)
{
    std::vector<BarChart::Bar> bars;
    for (Step const step : steps) {
        TimeTest const* const test = diagnosis.timeTest(step);
        bool const inUse = diagnosis.verdict && isInUse(step, *diagnosis.verdict);
        if (test)
            bars.push_back(
                {withCapital(nameOf(step)) + (inUse ? ", in use" : ""), test->rate, resultOf(*test), inUse});
    }
    return bars;
}

void writeChart(HtmlWriter& html, BarChart const& chart, std::string_view rule)
{
    if (chart.bars.empty())
        return;
    html.element("figure", {}, [&] {
        html.element("h3", {}, chart.title);
        chart.write(html);
        html.element("figcaption", {}, rule);
    });
}

std::string surfacesText(int surfaces)
{
    return countText(surfaces) + (surfaces == 1 ? " surface" : " surfaces");
}

BarChart growthChart(Diagnosis const& diagnosis)
{
    // The first surfaces are drawn so fast that the goal would be lost beside them.
    constexpr double longestBar = 400.0;
    BarChart chart{"growth-chart",
                   "Frames per second as the scene grows",
                   {},
                   goalOfGrowth,
                   BarChart::Goal{goalOfGrowth, "80 frames per second"}};
    for (TimeTest const& test : diagnosis.timeTests) {
        if (!isOfScene(test))
            continue;
        chart.bars.push_back({surfacesText(test.surfaces), test.rate, resultOf(test),
                              diagnosis.verdict && test.surfaces == diagnosis.surfaces});
        chart.fullScale = std::clamp(test.rate, chart.fullScale, longestBar);
    }
    return chart;
}

bool isEmpty(std::optional<Diagnosis::PixelCount> const& pixels)
{
    return pixels && pixels->nonWhite == 0;
}

} // namespace

void writeSpeed(HtmlWriter& html, Diagnosis const& diagnosis)
{
    constexpr Step buffers[] = {Step::plain, Step::vbo};
    constexpr Step skinning[] = {Step::base, Step::program, Step::shader};
    double fastest = 0.0;
    for (TimeTest const& test : diagnosis.timeTests)
        if (!isOfScene(test))
            fastest = std::max(fastest, test.rate);
    if (std::ranges::all_of(diagnosis.timeTests, isOfScene)) {
        html.element("p", {}, "No technique was timed.");
        return;
    }
    html.element("p", {},
                 "Frames per second of the whole test scene; longer is faster. Three frames are timed, after "
                 "two that are not. Both charts have one scale.");
    html.element("div", {{"class", "charts"}}, [&] {
        writeChart(html, {"buffers-chart", "Buffer objects", barsOf(diagnosis, buffers), fastest, {}},
                   "Buffer objects stay if they are not slower than without.");
        writeChart(
            html, {"skinning-chart", "Skinning", barsOf(diagnosis, skinning), fastest, {}},
            "A skinning technique of the card stays if it is not slower than the processor, and if its "
            "pictures are right.");
    });
}

void writeSceneGrowth(HtmlWriter& html, Diagnosis const& diagnosis)
{
    html.element(
        "p", {},
        "So that every machine is measured under a load that it feels, the number of surfaces is doubled "
        "until plain drawing makes 80 frames per second or fewer, or there are 256. A surface has 19,602 "
        "triangles.");
    if (diagnosis.surfaces == 1 && isEmpty(diagnosis.referencePixels))
        html.element("p", {},
                     "It stopped at the first surface, which lies in front of the near plane: nothing was "
                     "in view, so no picture could be judged. This machine was too slow, or too busy.");
    html.element("div", {{"class", "charts"}}, [&] {
        writeChart(html, growthChart(diagnosis),
                   "The marks are where growing ends; the solid bar is the scene that all else was measured "
                   "with. Longer bars than for 400 frames per second are cut there.");
    });
}

} // namespace sgview
