#include "Viewer/Diagnosis/DiagnosisReportPictures.h"

#include "Viewer/Diagnosis/DiagnosisFigures.h"
#include "Viewer/Platform/PngEncoder.h"
#include "Viewer/Report/Base64.h"
#include "Viewer/Report/NumberText.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace sgview {

namespace {

using Comparison = Diagnosis::Comparison;
using View = Diagnosis::View;

constexpr double pixelsOfPicture = 512.0 * 512.0;

/// A technique's pictures and the plain one that its bent picture is held against.
struct Path {
    View atRest;
    View bent;
    View check;
};
constexpr Path paths[] = {{View::programAtRest, View::programBent, View::programCheck},
                          {View::shaderAtRest, View::shaderBent, View::shaderCheck}};

std::string mismatchText(Comparison const& comparison)
{
    return shareText(comparison.mismatch) + " (" +
           countText(std::llround(comparison.mismatch * pixelsOfPicture)) + " of " +
           countText(std::llround(pixelsOfPicture)) + ')';
}

std::string_view requirementOn(Comparison const& comparison)
{
    return comparison.mustDiffer ? "1% or more" : "less than 1%";
}

void writeResult(HtmlWriter& html, bool passed, std::string_view words)
{
    html.element("span", {{"class", passed ? "good" : "bad"}}, [&] {
        html.element("span", {{"aria-hidden", "true"}}, passed ? "✓ " : "✗ ");
        html.text(words);
    });
}

void writeResult(HtmlWriter& html, Comparison const& comparison)
{
    bool const passed = comparison.passed();
    if (comparison.mustDiffer)
        writeResult(html, passed, passed ? "right: they differ" : "wrong: they are the same");
    else
        writeResult(html, passed, passed ? "right: they are the same" : "wrong: they differ");
}

void writeRow(HtmlWriter& html, Comparison const& comparison)
{
    html.element("tr", {}, [&] {
        html.element("th", {{"scope", "row"}},
                     std::string(nameOf(comparison.a)) + " – " + std::string(nameOf(comparison.b)));
        html.element("td", {{"class", "off-share"}}, mismatchText(comparison));
        html.element("td", {{"class", "wanted"}}, requirementOn(comparison));
        html.element("td", {}, [&] { writeResult(html, comparison); });
    });
}

void writeComparisons(HtmlWriter& html, std::vector<Comparison> const& comparisons)
{
    html.element("table", {{"class", "comparisons"}}, [&] {
        html.element("caption", {},
                     "A pixel is off if the squared distance of its four components is more than 100.");
        html.element("thead", {}, [&] {
            html.element("tr", {}, [&] {
                for (char const* const heading : {"Pictures", "Pixels off", "Wanted", "Result"})
                    html.element("th", {{"scope", "col"}}, heading);
            });
        });
        html.element("tbody", {}, [&] {
            for (Comparison const& comparison : comparisons)
                writeRow(html, comparison);
        });
    });
}

void writeImage(HtmlWriter& html, Picture const& picture, std::string const& description)
{
    html.emptyElement("img", {{"alt", description},
                              {"width", std::to_string(picture.size.width)},
                              {"height", std::to_string(picture.size.height)},
                              {"src", "data:image/png;base64," + asBase64(encodePng(picture))}});
}

void writePixelCount(HtmlWriter& html, Diagnosis::PixelCount const& pixels)
{
    constexpr int onePercent = 2621;
    bool const plausible = pixels.white > onePercent && pixels.nonWhite > onePercent;
    html.text(": " + countText(pixels.white) + " white pixels and " + countText(pixels.nonWhite) +
              " others, more than 2,621 of each wanted ");
    writeResult(html, plausible, plausible ? "plausible" : "implausible");
}

void writeView(HtmlWriter& html, Diagnosis const& diagnosis, View view, std::string const& place)
{
    Picture const* const picture = diagnosis.image(view);
    if (!picture)
        return;
    std::string const name(nameOf(view));
    html.element("figure", {{"class", place}}, [&] {
        writeImage(html, *picture, "Test scene: " + name);
        html.element("figcaption", {}, [&] {
            html.text(name);
            if (view == View::reference && diagnosis.referencePixels)
                writePixelCount(html, *diagnosis.referencePixels);
        });
    });
}

void writeDifference(HtmlWriter& html, Diagnosis const& diagnosis, View a, View b, std::string const& place)
{
    auto const comparison = std::ranges::find_if(
        diagnosis.comparisons, [&](Comparison const& other) { return other.a == a && other.b == b; });
    if (comparison == diagnosis.comparisons.end())
        return;
    std::optional<Picture> const difference = differenceOf(diagnosis, *comparison);
    if (!difference)
        return;
    std::string const what =
        "Difference of “" + std::string(nameOf(a)) + "” and “" + std::string(nameOf(b)) + "”";
    std::string const mismatch =
        mismatchText(*comparison) + " off, " + std::string(requirementOn(*comparison)) + " wanted";
    html.element("figure", {{"class", "difference " + place}}, [&] {
        writeImage(html, *difference, what + ": " + mismatch);
        html.element("figcaption", {}, [&] {
            html.text(what + ": " + mismatch + ' ');
            writeResult(html, *comparison);
        });
    });
}

void writePath(HtmlWriter& html, Diagnosis const& diagnosis, Path const& path)
{
    writeView(html, diagnosis, path.atRest, "card-drawn rest");
    writeDifference(html, diagnosis, View::reference, path.atRest, "rest");
    writeView(html, diagnosis, path.check, "plain bent");
    writeView(html, diagnosis, path.bent, "card-drawn bent");
    writeDifference(html, diagnosis, path.bent, path.check, "bent");
    writeDifference(html, diagnosis, View::reference, path.bent, "contrast");
    if (diagnosis.image(path.bent))
        html.element(
            "p", {{"class", "reading muted"}},
            "Differences are " + std::to_string(differenceAmplification) +
                " times as bright as they are. Black is the same in both pictures. Bending the bones has to "
                "move what is drawn, so the difference between rest and bent must not be black.");
}

} // namespace

void writePictures(HtmlWriter& html, Diagnosis const& diagnosis)
{
    if (diagnosis.images.empty() && diagnosis.comparisons.empty()) {
        html.element("p", {}, "No picture was read back.");
        return;
    }
    if (diagnosis.comparisons.empty())
        html.element("p", {}, "No two pictures were compared.");
    else
        writeComparisons(html, diagnosis.comparisons);
    for (Path const& path : paths) {
        bool const isFirst = &path == &paths[0];
        if (!isFirst && !diagnosis.image(path.atRest))
            continue;
        html.element("div", {{"class", "pictures"}}, [&] {
            if (isFirst)
                writeView(html, diagnosis, View::reference, "plain rest");
            writePath(html, diagnosis, path);
        });
    }
}

} // namespace sgview
