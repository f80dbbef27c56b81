#include "Viewer/Window/ViewLayout.h"

#include <gtest/gtest.h>

namespace sgview {
namespace {

TEST(ViewLayout, LeavesTheModelWhatTheBarsDoNotTake)
{
    ViewLayout const all = layOutView(940.0, 800.0, {true, true});
    EXPECT_TRUE(all.hasStatus && all.hasPlayback);
    EXPECT_EQ(all.freeHeight(), 800.0 - ViewLayout::statusRow - ViewLayout::playbackRow);
    EXPECT_EQ(all.width, 940.0);

    ViewLayout const still = layOutView(940.0, 800.0, {true, false});
    EXPECT_EQ(still.freeHeight(), 800.0 - ViewLayout::statusRow);
    EXPECT_EQ(layOutView(940.0, 800.0, {}).freeHeight(), 800.0);
}

TEST(ViewLayout, DropsTheStatusFirstThenPlayback)
{
    ViewLayout const low = layOutView(320.0, 200.0, {true, true});
    EXPECT_FALSE(low.hasStatus);
    EXPECT_TRUE(low.hasPlayback);
    EXPECT_TRUE(layOutView(320.0, 200.0, {true, false}).hasStatus);
    EXPECT_FALSE(layOutView(320.0, 200.0, {true, false, true}).hasStatus) << "two rows of pictures";

    for (double const height : {0.0, 1.0, 60.0, 100.0}) {
        ViewLayout const lowest = layOutView(0.0, height, {true, true});
        EXPECT_FALSE(lowest.hasStatus || lowest.hasPlayback) << height;
        EXPECT_GE(lowest.freeHeight(), 1.0);
        EXPECT_GE(lowest.width, 1.0);
    }
}

} // namespace
} // namespace sgview
