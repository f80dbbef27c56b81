#include "Viewer/Report/NumberText.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(NumberText, CountsHaveCommas)
{
    EXPECT_EQ(sgview::countText(0), "0");
    EXPECT_EQ(sgview::countText(999), "999");
    EXPECT_EQ(sgview::countText(1000), "1,000");
    EXPECT_EQ(sgview::countText(2147483647), "2,147,483,647");
    EXPECT_EQ(sgview::countText(-100), "-100");
    EXPECT_EQ(sgview::countText(-1234), "-1,234");
}

TEST(NumberText, MeasuresHaveFourDigits)
{
    EXPECT_EQ(sgview::measureText(0.0), "0");
    EXPECT_EQ(sgview::measureText(0.763872), "0.764");
    EXPECT_EQ(sgview::measureText(9.99949), "9.999");
    EXPECT_EQ(sgview::measureText(9.9996), "10.00");
    EXPECT_EQ(sgview::measureText(80.0), "80.00");
    EXPECT_EQ(sgview::measureText(79.99), "79.99");
    EXPECT_EQ(sgview::measureText(99.996), "100.0");
    EXPECT_EQ(sgview::measureText(531.067), "531.1");
    EXPECT_EQ(sgview::measureText(999.96), "1,000");
    EXPECT_EQ(sgview::measureText(3e6), "3,000,000");
}

TEST(NumberText, MeasuresThatAreNoneAreShownAsTheyAre)
{
    EXPECT_EQ(sgview::measureText(-2.5), "-2.5");
    EXPECT_EQ(sgview::measureText(1e300), "1e+300");
    EXPECT_EQ(sgview::measureText(std::numeric_limits<double>::infinity()), "inf");
}

TEST(NumberText, ExactNumbersReadBackAsThemselves)
{
    EXPECT_EQ(sgview::exactText(0.1), "0.1");
    EXPECT_EQ(sgview::exactText(-30.0), "-30");
    EXPECT_EQ(sgview::exactText(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(sgview::exactText(-2.2250738585072014e-308), "-2.2250738585072014e-308");
}

TEST(NumberText, SharesTellTheLimitFromOnePixelLess)
{
    EXPECT_EQ(sgview::shareText(0.0), "0%");
    EXPECT_EQ(sgview::shareText(1.0), "100%");
    EXPECT_EQ(sgview::shareText(1.0 / 262144), "0.0004%");
    EXPECT_EQ(sgview::shareText(2621.0 / 262144), "0.9998%");
    EXPECT_EQ(sgview::shareText(2622.0 / 262144), "1.0002%");
    EXPECT_EQ(sgview::shareText(0.5), "50%");
}

} // namespace
