#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

class DemoWindow : public WindowTest {
protected:
    static constexpr Region all{0, 0, windowSize.width, windowSize.height};

    void openDemo() { ASSERT_NO_FATAL_FAILURE(open({"demo", "--window", "--technique", "plain"})); }

    void expectMotion() const
    {
        for (int i = 0; i < 3; ++i) { // goes on and on
            sgview::Picture const now = look(all);
            EXPECT_TRUE(eventually([&] { return difference(look(all), now) > 0.005; }));
        }
    }

    /// Where no creature comes, the picture is the one that is drawn into files.
    void expectScene(sgview::PictureSize size) const
    {
        Region const floor{0, size.height * 5 / 6, size.width, size.height / 6};
        sgview::Picture const drawn = cut(draw({"demo", "--technique", "plain"}, size), floor);
        sgview::Picture const seen = still(floor);
        EXPECT_LT(difference(seen, drawn), 0.02); // edges are smoother in the window
    }
};

TEST_F(DemoWindow, MovesUntilItIsPaused)
{
    ASSERT_NO_FATAL_FAILURE(open({"demo", "--window"})); // by the technique that is measured first
    EXPECT_EQ(user->title(),
              "demonstration scene - sgview (Space: play or pause, F11: full screen, Q: quit)");
    expectMotion();
    user->type(XK_space);
    sgview::Picture const paused = still(all);
    user->type(XK_x); // means nothing here
    EXPECT_EQ(still(all).pixels, paused.pixels);
    EXPECT_TRUE(fallsIdle());
    user->type(XK_space);
    expectMotion();
    quitWell();
}

TEST_F(DemoWindow, FollowsTheWindowsSize)
{
    ASSERT_NO_FATAL_FAILURE(openDemo());
    user->type(XK_space);
    expectScene(windowSize);
    for (sgview::PictureSize const size : {sgview::PictureSize{400, 600}, sgview::PictureSize{1100, 300}}) {
        user->resize(size);
        ASSERT_TRUE(eventually([&] { return user->size() == size; }));
        EXPECT_TRUE(eventually([&] { return shareOtherThan(user->look(), 0, 0, 0) > 0.9; }));
        expectScene(size);
    }
    quitWell();
}

TEST_F(DemoWindow, OutlivesAnySize)
{
    ASSERT_NO_FATAL_FAILURE(openDemo());
    for (sgview::PictureSize const size :
         {sgview::PictureSize{1, 1}, sgview::PictureSize{2, 700}, sgview::PictureSize{1200, 3},
          sgview::PictureSize{3000, 2000}, windowSize}) {
        user->resize(size);
        ASSERT_TRUE(eventually([&] { return user->size() == size; }));
    }
    expectMotion();
    quitWell();
}

TEST_F(DemoWindow, RestsWhileNobodySeesIt)
{
    ASSERT_NO_FATAL_FAILURE(openDemo());
    expectMotion();
    user->hide();
    EXPECT_TRUE(fallsIdle());
    user->show();
    expectMotion();
    quitWell();
}

TEST_F(DemoWindow, ClosesByEscapeAndByItsFrame)
{
    for (bool const byKey : {true, false}) {
        ASSERT_NO_FATAL_FAILURE(openDemo());
        if (byKey)
            user->type(XK_Escape);
        else
            user->close();
        ASSERT_TRUE(eventually([this] { return program->status().has_value(); }));
        EXPECT_EQ(program->status(), 0);
        EXPECT_EQ(errors(), "");
    }
}

TEST_F(DemoWindow, SaysWhatATechniqueLacks)
{
    program = std::make_unique<Process>(
        std::vector<std::string>{SGVIEW, "demo", "--window", "--technique", "program"},
        Environment{{"DISPLAY", display},
                    {"WAYLAND_DISPLAY", std::nullopt},
                    {"HOME", home.string()},
                    {"LIBGL_ALWAYS_SOFTWARE", "1"},
                    {"MESA_EXTENSION_OVERRIDE", "-GL_ARB_vertex_program"}},
        (folder / "errors").string());
    ASSERT_TRUE(eventually([this] { return program->status().has_value(); }));
    EXPECT_EQ(program->status(), 1);
    EXPECT_EQ(errors(), "sgview: technique program: the OpenGL in use lacks GL_ARB_vertex_program\n");
}

} // namespace
