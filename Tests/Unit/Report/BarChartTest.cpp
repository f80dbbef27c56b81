#include "Tests/Unit/Report/Page.h"

#include "Viewer/Report/BarChart.h"

#include <gmock/gmock.h>

#include <limits>
#include <sstream>

namespace {

using sgview::BarChart;

BarChart sample()
{
    return {"speeds",
            "Speeds",
            {{"Slow", 50.0, "50 a second", false}, {"Fast, in use", 200.0, "200 a second", true}},
            400.0,
            BarChart::Goal{100.0, "a hundred"}};
}

Page written(BarChart const& chart)
{
    std::ostringstream out;
    sgview::HtmlWriter html(out);
    chart.write(html);
    return Page(out.str());
}

double widthOf(pugi::xml_node element)
{
    return element.attribute("width").as_double();
}

/// Of the bars, without what lies behind them.
std::vector<pugi::xml_node> barsOf(Page const& page)
{
    std::vector<pugi::xml_node> bars;
    for (pugi::xml_node const rectangle : page.elements("rect"))
        if (std::string_view(rectangle.attribute("class").value()) != "track")
            bars.push_back(rectangle);
    return bars;
}

TEST(BarChart, HasALengthForEachValue)
{
    Page const page = written(sample());
    auto const bars = barsOf(page);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_DOUBLE_EQ(widthOf(bars[1]), 4.0 * widthOf(bars[0]));
    EXPECT_DOUBLE_EQ(widthOf(bars[1]), 0.5 * widthOf(page.elements("rect").front())) << "half of full scale";
    EXPECT_STREQ(bars[0].attribute("class").value(), "bar");
    EXPECT_STREQ(bars[1].attribute("class").value(), "bar chosen");
}

TEST(BarChart, MarksTheGoalOnEachBar)
{
    Page const page = written(sample());
    auto const marks = page.elements("line");
    ASSERT_EQ(marks.size(), 2U);
    for (pugi::xml_node const mark : marks)
        EXPECT_DOUBLE_EQ(mark.attribute("x1").as_double(), 2.0 * widthOf(barsOf(page)[0]));
}

TEST(BarChart, HasATextForEachValue)
{
    std::vector<std::string> texts;
    Page const page = written(sample());
    for (pugi::xml_node const text : page.elements("text"))
        texts.push_back(Page::textOf(text));
    EXPECT_THAT(texts, testing::UnorderedElementsAre("Slow", "50 a second", "Fast, in use", "200 a second",
                                                     "a hundred"));
}

TEST(BarChart, DescribesItself)
{
    Page const page = written(sample());
    pugi::xml_node const chart = page.elements("svg").front();
    pugi::xml_node const description = page.elements("desc").front();
    EXPECT_STREQ(chart.attribute("role").value(), "img");
    EXPECT_STREQ(chart.attribute("aria-label").value(), "Speeds");
    EXPECT_STREQ(chart.attribute("aria-describedby").value(), description.attribute("id").value());
    EXPECT_EQ(Page::textOf(description), "Slow: 50 a second. Fast, in use: 200 a second. a hundred.");
}

/// Of the only bar of a chart.
double lengthOf(double value, double fullScale)
{
    Page const page = written({"one", "One", {{"Bar", value, "", false}}, fullScale, {}});
    return widthOf(barsOf(page).front());
}

TEST(BarChart, DrawsNothingForWhatIsNoLength)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    double const full = lengthOf(1.0, 1.0);
    EXPECT_GT(full, 0.0);
    EXPECT_EQ(lengthOf(-1.0, 400.0), 0.0);
    EXPECT_EQ(lengthOf(std::numeric_limits<double>::quiet_NaN(), 400.0), 0.0);
    EXPECT_EQ(lengthOf(1.0, 0.0), 0.0);
    EXPECT_EQ(lengthOf(infinity, 400.0), full);
}

} // namespace
