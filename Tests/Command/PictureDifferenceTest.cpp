#include "Viewer/Platform/PictureDifference.h"

#include <gtest/gtest.h>

namespace {

using sgview::Picture;
using sgview::PictureDifference;

TEST(PictureDifference, OfEqualPicturesIsNone)
{
    Picture const picture({3, 2});
    PictureDifference const difference = measureDifference(picture, picture);
    EXPECT_EQ(difference.pixels, 6U);
    EXPECT_EQ(difference.mismatches, 0U);
    EXPECT_EQ(difference.largest, 0);
    EXPECT_TRUE(difference.isTolerable());
}

TEST(PictureDifference, SquaredDistanceOfAHundredIsTolerated)
{
    Picture const a({2, 1});
    Picture b({2, 1});
    b.pixels[0] = 10;
    PictureDifference difference = measureDifference(a, b);
    EXPECT_EQ(difference.mismatches, 0U);
    EXPECT_EQ(difference.largest, 10);
    EXPECT_EQ(difference.largestElsewhere, 10);

    b.pixels[3] = 1; // opacity counts like a colour
    b.pixels[6] = 4;
    difference = measureDifference(b, a);
    EXPECT_EQ(difference.mismatches, 1U);
    EXPECT_EQ(difference.largest, 10);
    EXPECT_EQ(difference.largestElsewhere, 4);
}

TEST(PictureDifference, OneInAHundredIsTooMany)
{
    EXPECT_FALSE((PictureDifference{1000, 10, 255, 0}.isTolerable()));
    EXPECT_TRUE((PictureDifference{1000, 9, 255, 0}.isTolerable()));
}

TEST(PictureDifference, IsAmplifiedUpToWhite)
{
    Picture a({1, 1});
    Picture b({1, 1});
    a.pixels = {5, 0, 100, 0};
    b.pixels = {2, 0, 200, 0};
    EXPECT_EQ(amplifiedDifference(a, b, 8).pixels, (std::vector<std::uint8_t>{24, 0, 255, 0}));
}

} // namespace
