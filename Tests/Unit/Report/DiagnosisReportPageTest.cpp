#include "Tests/Unit/Report/Page.h"
#include "Tests/Unit/Report/SampleDiagnosis.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <set>

// What holds for the page whatever it reports.
namespace {

using sgview::Diagnosis;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

char const* const hostile =
    "</style><script>alert(\"1\")</script>' onload='x\n--><!-- ]]> &lt; \xFF\xC0\xBC \x1B[2J \u202E";

Diagnosis hostileDiagnosis()
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.card = hostile;
    diagnosis.limits.front().name = hostile;
    diagnosis.log.emplace_back(hostile);
    return diagnosis;
}

TEST(DiagnosisReportPage, ShowsHostileTextsAsTexts)
{
    Page const page(reportOn(hostileDiagnosis(), hostile));
    EXPECT_TRUE(page.elements("script").empty());
    EXPECT_EQ(page.elements("style").size(), 1U);
    std::string const shown = "</style><script>alert(\"1\")</script>' onload='x\n--><!-- ]]> &lt; "
                              "\uFFFD\uFFFD\uFFFD \uFFFD[2J \u202E";
    EXPECT_EQ(Page::textOf(page.elements("bdi").front()), shown);
    EXPECT_THAT(Page::textOf(page.elements("pre").front()), HasSubstr(shown + '\n'));
    EXPECT_EQ(Page::textOf(page.elements("header").front().child("div").child("p")), shown);
    for (pugi::xml_node const element : page.elements("*"))
        for (pugi::xml_attribute const attribute : element.attributes())
            EXPECT_THAT(attribute.name(), Not(StartsWith("on")));
}

TEST(DiagnosisReportPage, RefersToNothingOutside)
{
    Page const page(reportOn(sampleDiagnosis()));
    std::set<std::string> const loading{"src", "href", "srcset", "data", "poster", "action", "background"};
    std::set<std::string> const foreign{"base", "embed", "iframe", "link", "object", "script"};
    int sources = 0;
    for (pugi::xml_node const element : page.elements("*")) {
        EXPECT_FALSE(foreign.contains(element.name())) << element.name();
        for (pugi::xml_attribute const attribute : element.attributes()) {
            EXPECT_THAT(attribute.value(), Not(HasSubstr("http:")));
            if (!loading.contains(attribute.name()))
                continue;
            EXPECT_THAT(attribute.value(), StartsWith("data:image/png;base64,"));
            ++sources;
        }
    }
    EXPECT_EQ(sources, 7);
    std::string const style = Page::textOf(page.elements("style").front());
    EXPECT_THAT(style, testing::AllOf(Not(HasSubstr("url(")), Not(HasSubstr("@import"))));
    EXPECT_THAT(page.source(), HasSubstr("default-src 'none'"));
}

TEST(DiagnosisReportPage, HasItsStyleUnchangedInHtmlAndXml)
{
    Page const page(reportOn(sampleDiagnosis()));
    std::string const style = Page::textOf(page.elements("style").front());
    EXPECT_THAT(page.source(), HasSubstr("<style>" + style + "</style>"));
}

TEST(DiagnosisReportPage, IsTheSameForTheSameRun)
{
    EXPECT_EQ(reportOn(hostileDiagnosis()), reportOn(hostileDiagnosis()));
}

TEST(DiagnosisReportPage, SaysWhoWroteItAndWhen)
{
    Page const page(reportOn(sampleDiagnosis()));
    EXPECT_THAT(Page::textOf(page.elements("header").front()),
                HasSubstr("Written by sgview " SG_VERSION " on 2024-02-29 23:59:58 UTC"));
    ASSERT_EQ(page.elements("time").size(), 1U);
    EXPECT_STREQ(page.elements("time").front().attribute("datetime").value(), "2024-02-29 23:59:58Z");
}

TEST(DiagnosisReportPage, DescribesEachPicture)
{
    Page const page(reportOn(sampleDiagnosis()));
    std::set<std::string> descriptions;
    for (pugi::xml_node const image : page.elements("img")) {
        EXPECT_STREQ(image.attribute("width").value(), "4");
        EXPECT_STREQ(image.attribute("height").value(), "3");
        EXPECT_STREQ(image.parent().name(), "figure");
        EXPECT_NE(Page::textOf(image.parent().child("figcaption")), "");
        descriptions.insert(image.attribute("alt").value());
    }
    EXPECT_EQ(descriptions.size(), 7U) << "each its own";
    EXPECT_EQ(descriptions.count(""), 0U);
}

TEST(DiagnosisReportPage, HasOneOutlineWithoutGaps)
{
    Page const page(reportOn(sampleDiagnosis()));
    int level = 0;
    for (pugi::xml_node const element : page.elements("*")) {
        std::string const name = element.name();
        if (name.size() != 2 || name[0] != 'h' || name[1] < '1' || name[1] > '6')
            continue;
        EXPECT_LE(name[1] - '0', level + 1) << Page::textOf(element);
        level = name[1] - '0';
    }
    EXPECT_EQ(page.elements("h1").size(), 1U);
    EXPECT_EQ(page.elements("main").size(), 1U);
}

TEST(DiagnosisReportPage, NamesPartsByWhatIsThere)
{
    Page const page(reportOn(sampleDiagnosis()));
    std::set<std::string> ids;
    for (pugi::xml_node const element : page.elements("*")) {
        if (pugi::xml_attribute const id = element.attribute("id")) {
            EXPECT_TRUE(ids.insert(id.value()).second) << id.value() << " twice";
        }
    }
    int references = 0;
    for (pugi::xml_node const element : page.elements("*")) {
        for (char const* const name : {"aria-labelledby", "aria-describedby"}) {
            if (pugi::xml_attribute const reference = element.attribute(name)) {
                EXPECT_TRUE(ids.contains(reference.value())) << reference.value();
                ++references;
            }
        }
    }
    EXPECT_EQ(references, 6 + 3) << "sections and charts";
}

TEST(DiagnosisReportPage, TellsWhatTableHeadingsAreFor)
{
    Page const page(reportOn(sampleDiagnosis()));
    for (pugi::xml_node const heading : page.elements("th")) {
        bool const isOfColumn = std::string_view(heading.parent().parent().name()) == "thead";
        EXPECT_STREQ(heading.attribute("scope").value(), isOfColumn ? "col" : "row");
    }
}

using Palette = std::map<std::string, std::array<double, 3>>;

/// The colours of the style sheet's n-th list of variables.
Palette paletteOf(std::string const& style, std::size_t which)
{
    std::size_t at = 0;
    for (std::size_t i = 0; i <= which; ++i)
        at = style.find(":root", at) + 1;
    std::string const list = style.substr(at, style.find('}', at) - at);
    Palette palette;
    for (at = list.find("--"); at != std::string::npos; at = list.find("--", at)) {
        std::size_t const colon = list.find(':', at);
        auto& colour = palette[list.substr(at + 2, colon - at - 2)];
        for (std::size_t c = 0; c < colour.size(); ++c) {
            int component = 0;
            char const* const digits = &list[colon + 3 + 2 * c];
            std::from_chars(digits, digits + 2, component, 16);
            colour[c] = component / 255.0;
        }
        at = colon;
    }
    return palette;
}

double luminance(std::array<double, 3> const& colour) // WCAG 2.1, relative luminance
{
    auto const linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour[0]) + 0.7152 * linear(colour[1]) + 0.0722 * linear(colour[2]);
}

double contrast(std::array<double, 3> const& a, std::array<double, 3> const& b)
{
    auto const [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(DiagnosisReportPage, HasContrastEnoughInLightAndDark) // WCAG 2.1, 1.4.3 and 1.4.11
{
    Page const page(reportOn(sampleDiagnosis()));
    std::string const style = Page::textOf(page.elements("style").front());
    for (std::size_t const which : {0U, 1U}) {
        SCOPED_TRACE(which == 0 ? "light" : "dark");
        Palette palette = paletteOf(style, which);
        ASSERT_EQ(palette.size(), 12U);
        for (char const* const behind : {"page", "panel"}) {
            for (char const* const text : {"text", "muted", "good", "bad"})
                EXPECT_GE(contrast(palette[text], palette[behind]), 4.5) << text << " on " << behind;
            for (char const* const shape : {"solid", "edge", "goal", "bad"})
                EXPECT_GE(contrast(palette[shape], palette[behind]), 3.0) << shape << " on " << behind;
        }
        for (char const* const shape : {"solid", "edge", "goal"})
            EXPECT_GE(contrast(palette[shape], palette["track"]), 3.0) << shape << " on a bar's track";
    }
}

} // namespace
