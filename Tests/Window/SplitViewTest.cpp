#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

class SplitView : public WindowTest {
protected:
    // Of the two pictures above and the one beneath, what nothing lies over.
    static constexpr Region leftPicture{10, 130, 310, 150};
    static constexpr Region rightPicture{342, 130, 310, 150};
    static constexpr Region differencePicture{10, 300, 310, 250};
};

TEST_F(SplitView, ShowsTheModelTwiceAndNoDifferenceBeneath)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const whole = still(scene);
    user->type(XK_s);
    static_cast<void>(changed(scene, whole));
    sgview::Picture const left = still(leftPicture);
    EXPECT_GT(shareOtherThan(left, 219, 224, 230), 0.2);
    EXPECT_LT(difference(left, still(rightPicture)), 0.01);
    EXPECT_LT(shareOtherThan(still(differencePicture), 0, 0, 0), 0.05);
    user->type(XK_s);
    EXPECT_TRUE(returnsTo(scene, whole));
    quitWell();
}

TEST_F(SplitView, FollowsPoseAndCamera)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    user->type(XK_s);
    sgview::Picture picture = still(leftPicture);
    for (unsigned long const key : {XK_period, XK_Left, XK_k}) {
        user->type(key);
        picture = changed(leftPicture, picture);
        EXPECT_LT(difference(picture, still(rightPicture)), 0.01);
    }
    quitWell();
}

TEST_F(SplitView, EndsWithTheTechniqueInUse)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {"--technique", "vbo"}));
    sgview::Picture const whole = still(scene);
    sgview::Picture const status = still(statusLine);
    user->type(XK_s);
    static_cast<void>(changed(statusLine, status));
    user->type(XK_Escape);
    EXPECT_TRUE(returnsTo(statusLine, status));
    EXPECT_TRUE(returnsTo(scene, whole));
    quitWell();
}

TEST_F(SplitView, PlaysAndStandsOnAnEmptyWindow)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    user->type(XK_s);
    user->type(XK_space);
    sgview::Picture const now = look(leftPicture);
    EXPECT_TRUE(eventually([&] { return difference(look(leftPicture), now) > 0.005; }));
    quitWell();
    ASSERT_NO_FATAL_FAILURE(open({}));
    user->type(XK_s);
    EXPECT_LT(shareOtherThan(still(scene), 219, 224, 230), 0.25);
    quitWell();
}

} // namespace
