#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

class Display : public WindowTest {};

TEST_F(Display, EachSwitchShowsSomethingAndLeavesNothingBehind)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const plain = still(scene);
    for (unsigned long const key : {XK_w, XK_i, XK_n, XK_k, XK_x, XK_m, XK_g}) {
        user->type(key);
        sgview::Picture const switched = changed(scene, plain);
        EXPECT_GT(difference(switched, plain), 0.001) << static_cast<char>(key);
        user->type(key);
        EXPECT_TRUE(returnsTo(scene, plain)) << static_cast<char>(key);
    }
    quitWell();
}

TEST_F(Display, OverlaysFollowTheAnimation)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    for (unsigned long const key : {XK_k, XK_n, XK_g})
        user->type(key);
    sgview::Picture const start = still(scene);
    for (int frame = 0; frame < 12; ++frame)
        user->type(XK_period);
    sgview::Picture const later = changed(scene, start);
    EXPECT_GT(difference(later, start), 0.01);
    for (int frame = 0; frame < 12; ++frame)
        user->type(XK_comma);
    EXPECT_TRUE(returnsTo(scene, start));
    quitWell();
}

TEST_F(Display, SwitchesOutliveAnotherFile)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const plain = still(scene);
    for (unsigned long const key : {XK_w, XK_k, XK_x, XK_n, XK_m})
        user->type(key);
    sgview::Picture const switched = changed(scene, plain);
    ASSERT_TRUE(user->drop({std::string(TEST_MODELS) + "/rigid.gltf"}));
    awaitFile("rigid.gltf");
    ASSERT_TRUE(user->drop({CREATURE}));
    awaitFile("creature.glb");
    EXPECT_TRUE(returnsTo(scene, switched));
    quitWell();
}

} // namespace
