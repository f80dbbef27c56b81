#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

/// Keys that are held for so long that the display repeats them: the first time after more than half a
/// second.
class HeldKey : public WindowTest {
protected:
    static constexpr int enough = 15;
};

TEST_F(HeldKey, SwitchesOnce)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const plain = still(scene);
    user->type(XK_w);
    sgview::Picture const edges = changed(scene, plain);
    user->type(XK_w);
    ASSERT_TRUE(returnsTo(scene, plain));

    ASSERT_GE(user->hold(XK_p, enough), enough);
    ASSERT_GE(user->hold(XK_w, enough), enough);
    EXPECT_TRUE(returnsTo(scene, edges));
    EXPECT_EQ(keptPictures().size(), 1U);
    quitWell();
}

TEST_F(HeldKey, MovesOn)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const first = still(scene);
    int const times = user->hold(XK_Left, enough);
    ASSERT_GE(times, enough);
    sgview::Picture const turned = changed(scene, first);
    user->type(XK_Home);
    ASSERT_TRUE(returnsTo(scene, first));
    user->type(XK_Left);
    EXPECT_GT(difference(changed(scene, first), turned), 0.05) << "turned once";
    for (int i = 1; i < times; ++i)
        user->type(XK_Left);
    EXPECT_TRUE(returnsTo(scene, turned));
    quitWell();
}

} // namespace
