#include "Viewer/Window/DesktopScale.h"

#include "Viewer/Window/ScreenMeasures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace sgview {
namespace {

TEST(DesktopScale, IsOneAtTheUsualDensity)
{
    EXPECT_EQ(scaleFromDpi("96"), 1.0);
    EXPECT_EQ(scaleFromDpi("192"), 2.0);
    EXPECT_EQ(scaleFromDpi("120.0"), 1.25);
}

TEST(DesktopScale, StaysWithinReason)
{
    EXPECT_EQ(scaleFromDpi("10"), ScreenMeasures::smallestScale);
    EXPECT_EQ(scaleFromDpi("1e9"), ScreenMeasures::largestScale);
    EXPECT_EQ(scaleFromDpi("inf"), ScreenMeasures::largestScale);
    for (char const* const text : {"", "0", "-96", "nan", "many", "96x", " ", "1e999"})
        EXPECT_EQ(scaleFromDpi(text), 1.0) << text;
}

TEST(ScreenMeasures, ConvertBetweenUnits)
{
    ScreenMeasures const dense{{500, 300}, {1000, 600}, 2.0};
    EXPECT_EQ(dense.pixelsPerUnit(), 2.0);
    EXPECT_EQ(dense.pointsPerUnit(), 1.0);
    ScreenMeasures const fractional{{1000, 600}, {1000, 600}, 1.25};
    EXPECT_EQ(fractional.pixelsPerUnit(), 1.0);
    EXPECT_EQ(fractional.pointsPerUnit(), 0.8);
}

TEST(ScreenMeasures, TheScreensRatioDoesNotChangeWithTheWindowsWidth)
{
    for (double const ratio : {1.0, 1.25, 1.5, 1.75, 2.0})
        for (int width = 200; width < 3000; ++width) {
            ScreenMeasures const window{
                {width, 600}, {static_cast<int>(std::lround(width * ratio)), 600}, 1.0};
            ASSERT_EQ(window.ratioOfScreen(), ratio) << width;
        }
}

} // namespace
} // namespace sgview
