#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

/// What desktops do to windows.
class Desktop : public WindowTest {};

TEST_F(Desktop, ClosesByItsFrame)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    user->close();
    ASSERT_TRUE(eventually([this] { return program->status().has_value(); }));
    EXPECT_EQ(program->status(), 0);
    EXPECT_EQ(errors(), "");
}

TEST_F(Desktop, FollowsTheWindowsSize)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    static_cast<void>(still(scene));
    user->resize({800, 500});
    ASSERT_TRUE(eventually([&] { return user->size() == sgview::PictureSize{800, 500}; }));
    EXPECT_TRUE(eventually([&] {
        Region const newPanel{800 - panelWidth + 5, 0, panelWidth - 10, 500};
        return shareOtherThan(look(newPanel), 219, 224, 230) > 0.99;
    }));
    user->resize({320, 240}); // too narrow for a panel
    ASSERT_TRUE(eventually([&] { return user->size() == sgview::PictureSize{320, 240}; }));
    EXPECT_TRUE(eventually([&] { return shareOtherThan(look({200, 60, 110, 100}), 219, 224, 230) < 0.95; }));
    quitWell();
}

TEST_F(Desktop, OutlivesAnySize)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    static_cast<void>(still({0, 0, windowSize.width, windowSize.height}));
    for (bool const isSplit : {false, true}) {
        if (isSplit)
            user->type(XK_s);
        for (sgview::PictureSize const size :
             {sgview::PictureSize{1, 1}, sgview::PictureSize{2, 700}, sgview::PictureSize{1200, 3},
              sgview::PictureSize{3000, 2000}}) {
            user->resize(size);
            ASSERT_TRUE(eventually([&] { return user->size() == size; }));
        }
    }
    user->type(XK_Escape);
    user->resize(windowSize);
    EXPECT_TRUE(eventually([&] {
        return user->size() == windowSize && shareOtherThan(look(panel), 219, 224, 230) > 0.99 &&
               shareOtherThan(look(scene), 219, 224, 230) > 0.25;
    }));
    quitWell();
}

TEST_F(Desktop, RestsWhileNothingChanges)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    static_cast<void>(still({0, 0, windowSize.width, windowSize.height}));
    double const before = program->processorTime();
    auto const start = std::chrono::steady_clock::now();
    static_cast<void>(
        eventually([&] { return std::chrono::steady_clock::now() - start > std::chrono::seconds(2); }));
    EXPECT_LT(program->processorTime() - before, 0.2);
}

TEST_F(Desktop, RestsWhileNobodySeesIt)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    user->type(XK_space);
    sgview::Picture const first = look(scene);
    ASSERT_TRUE(eventually([&] { return difference(look(scene), first) > 0.005; }));
    user->hide();
    EXPECT_TRUE(fallsIdle());
    user->show();
    for (int i = 0; i < 2; ++i) {
        sgview::Picture const now = look(scene);
        EXPECT_TRUE(eventually([&] { return difference(look(scene), now) > 0.005; })) << "plays on";
    }
    quitWell();
}

TEST_F(Desktop, SaysInALineThatThereIsNoDriver)
{
    program = std::make_unique<Process>(std::vector<std::string>{SGVIEW, CREATURE},
                                        Environment{{"DISPLAY", display},
                                                    {"WAYLAND_DISPLAY", std::nullopt},
                                                    {"HOME", home.string()},
                                                    {"LIBGL_ALWAYS_SOFTWARE", "1"},
                                                    {"LIBGL_DRIVERS_PATH", "/nonexistent"}},
                                        (folder / "errors").string());
    ASSERT_TRUE(eventually([this] { return program->status().has_value(); }));
    EXPECT_EQ(program->status(), 1);
    EXPECT_NE(errors().find("sgview: no display to open a window on (x11: "), std::string::npos) << errors();
    EXPECT_EQ(errors().find("X Error"), std::string::npos) << errors();
}

} // namespace
