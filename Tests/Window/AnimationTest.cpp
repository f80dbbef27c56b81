#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

class Animation : public WindowTest {
protected:
    static constexpr Region playbackBar{12, windowSize.height - 56, windowSize.width - panelWidth - 24, 44};
};

TEST_F(Animation, PlaysAndPauses)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const start = still(scene);
    user->type(XK_space);
    for (int i = 0; i < 3; ++i) { // goes on and on
        sgview::Picture const now = look(scene);
        ASSERT_TRUE(eventually([&] { return difference(look(scene), now) > 0.005; }));
    }
    user->type(XK_space);
    static_cast<void>(still(scene));
    quitWell();
}

TEST_F(Animation, PlaysAtOnceWhereOneIsAskedFor)
{
    ASSERT_NO_FATAL_FAILURE(open({CREATURE, "--animation", "look"}));
    ASSERT_TRUE(eventually([&] { return user->title() == "creature.glb - sgview"; }));
    for (int i = 0; i < 3; ++i) {
        sgview::Picture const now = look(scene);
        ASSERT_TRUE(eventually([&] { return difference(look(scene), now) > 0.005; }));
    }
    quitWell();
}

TEST_F(Animation, StepsForwardAndBack)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const start = still(scene);
    user->type(XK_period);
    sgview::Picture const first = changed(scene, start);
    user->type(XK_period);
    sgview::Picture const second = changed(scene, first);
    EXPECT_GT(difference(second, start), 0.0);
    user->type(XK_comma);
    EXPECT_TRUE(returnsTo(scene, first));
    user->type(XK_comma);
    EXPECT_TRUE(returnsTo(scene, start));
}

TEST_F(Animation, IsScrubbedWithThePointer)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const start = still(scene);
    int const y = windowSize.height - 34;
    user->drag(1, 270, y, 350, y);
    sgview::Picture const scrubbed = changed(scene, start);
    EXPECT_GT(difference(scrubbed, start), 0.02);
    EXPECT_EQ(still(scene).pixels, scrubbed.pixels); // and the view is not orbited
    user->drag(1, 350, y, 200, y);
    EXPECT_TRUE(returnsTo(scene, start));
}

TEST_F(Animation, OthersAreChosenAndTheRestPoseIsOne)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const swim = still(playbackBar);
    user->type(XK_a);
    sgview::Picture const other = changed(playbackBar, swim);
    user->type(XK_a);
    sgview::Picture const rest = changed(playbackBar, other);
    user->type(XK_a);
    EXPECT_TRUE(returnsTo(playbackBar, swim));
    user->type(XK_a, true);
    EXPECT_TRUE(returnsTo(playbackBar, rest));
}

TEST_F(Animation, SpeedAndLoopAreShown)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const first = still(playbackBar);
    for (auto const& [there, back] : {std::pair(XK_bracketright, XK_bracketleft), std::pair(XK_l, XK_l)}) {
        user->type(there);
        static_cast<void>(changed(playbackBar, first));
        user->type(back);
        EXPECT_TRUE(returnsTo(playbackBar, first));
    }
}

TEST_F(Animation, EndsWhereItDoesNotLoop)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const start = still(scene);
    user->type(XK_l);
    for (int i = 0; i < 12; ++i) // to a quarter of its length, which stands there to be seen
        user->type(XK_period);
    EXPECT_GT(difference(changed(scene, start), start), 0.02);
    user->type(XK_space);
    EXPECT_TRUE(returnsTo(scene, start)); // its end looks like its start
    static_cast<void>(still(scene));      // and by itself it stays there
}

} // namespace
