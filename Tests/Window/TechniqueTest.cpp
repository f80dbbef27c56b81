#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

class TechniqueKeys : public WindowTest {};

TEST_F(TechniqueKeys, CycleOnTheLivingSceneAndDrawTheSame)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {"--technique", "plain"}));
    user->type(XK_period); // a pose that bones make
    sgview::Picture const plain = still(scene);
    sgview::Picture const name = still(statusLine);
    std::vector<sgview::Picture> names{name};
    constexpr int techniques = 6;
    for (int i = 1; i < techniques; ++i) {
        user->type(XK_t);
        names.push_back(changed(statusLine, names.back()));
        for (std::size_t other = 0; other + 1 < names.size(); ++other)
            EXPECT_GT(difference(names.back(), names[other]), 0.0);
        EXPECT_LT(difference(still(scene), plain), 0.01);
    }
    user->type(XK_t);
    EXPECT_TRUE(returnsTo(statusLine, name));
    user->type(XK_t, true);
    EXPECT_TRUE(returnsTo(statusLine, names.back()));
    quitWell();
}

TEST_F(TechniqueKeys, StartWithTheOneAskedFor)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {"--technique", "plain"}));
    sgview::Picture const plain = still(statusLine);
    user->type(XK_t);
    sgview::Picture const vbo = changed(statusLine, plain);
    quitWell();
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {"--technique", "vbo"}));
    EXPECT_TRUE(returnsTo(statusLine, vbo));
    quitWell();
}

TEST_F(TechniqueKeys, KeepPlayingWhileTheySwitch)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    user->type(XK_space);
    for (int i = 0; i < 6; ++i) {
        sgview::Picture const now = look(scene);
        user->type(XK_t);
        ASSERT_TRUE(eventually([&] { return difference(look(scene), now) > 0.005; }));
    }
    quitWell();
}

} // namespace
