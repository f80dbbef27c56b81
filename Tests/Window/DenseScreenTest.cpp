#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

namespace fs = std::filesystem;

constexpr int ratio = 2; // pixels a point

/// Points as pixels.
constexpr Region dense(Region const& points)
{
    return {points.x * ratio, points.y * ratio, points.width * ratio, points.height * ratio};
}

/// Wayland, on a screen with several pixels a point: a compositor in a window of an X display fills itself
/// with the one window that it has.
class DenseScreen : public WindowTest {
protected:
    ~DenseScreen() override
    {
        program.reset();
        compositor.reset();
    }

    void SetUp() override
    {
        for (char const* const needed : {"Xvfb", "weston"})
            if (!isInstalled(needed))
                GTEST_SKIP() << needed << " is not installed";
        startDisplay({windowSize.width * ratio, windowSize.height * ratio});
        fs::create_directory(runtime);
        fs::permissions(runtime, fs::perms::owner_all);
        compositor = std::make_unique<Process>(
            std::vector<std::string>{
                "weston", "--no-config", "--backend=x11-backend.so", "--shell=kiosk-shell.so", "--use-pixman",
                "--width=" + std::to_string(windowSize.width),
                "--height=" + std::to_string(windowSize.height), "--scale=" + std::to_string(ratio),
                "--socket=" + socket, "--idle-time=0"},
            Environment{{"DISPLAY", display},
                        {"WAYLAND_DISPLAY", std::nullopt},
                        {"XDG_RUNTIME_DIR", runtime.string()}},
            (folder / "compositor").string());
        ASSERT_TRUE(eventually([this] { return fs::exists(runtime / socket) || compositor->status(); }));
        if (compositor->status())
            GTEST_SKIP() << "weston does not start here";
    }

    [[nodiscard]] Environment displayEnvironment() const override
    {
        if (!compositor)
            return WindowTest::displayEnvironment();
        return {{"DISPLAY", std::nullopt},
                {"WAYLAND_DISPLAY", socket},
                {"SDL_VIDEO_WAYLAND_ALLOW_LIBDECOR", "0"}, // it says where it looks for plug-ins
                {"XDG_RUNTIME_DIR", runtime.string()}};
    }

    [[nodiscard]] bool isResting() const override
    {
        return (!compositor || compositor->isResting()) && WindowTest::isResting();
    }

    /// Starts sgview and waits until the model stands there.
    void openCreature()
    {
        ASSERT_NO_FATAL_FAILURE(open({CREATURE, "--technique", "plain"}));
        // The compositor keeps the title to itself.
        ASSERT_TRUE(eventually([this] { return shareOtherThan(look(dense(scene)), 219, 224, 230) > 0.2; }));
        // The compositor adds up movements, and on a busy machine misses some while it starts: it has the
        // pointer elsewhere than the display then. Driven into the corner, both have it there.
        user->moveTo(0, 0);
        putPointerAway();
    }

    /// Where it covers nothing that is looked at: the compositor draws the pointer.
    void putPointerAway() const
    {
        user->moveTo(ratio * (windowSize.width - 20), ratio * (windowSize.height - 20));
    }

    /// As `FakeUser` does, in points.
    void drag(int fromX, int fromY, int toX, int toY) const
    {
        user->drag(1, ratio * fromX, ratio * fromY, ratio * toX, ratio * toY);
        putPointerAway();
    }

    std::string const socket = "wayland-test";
    fs::path const runtime = folder / "runtime";
    std::unique_ptr<Process> compositor;
};

TEST_F(DenseScreen, KeepsPicturesOfEveryPixel)
{
    ASSERT_NO_FATAL_FAILURE(openCreature());
    sgview::Picture const seen = still(dense(scene));
    sgview::Picture const kept = keep();
    EXPECT_EQ(kept.size.width, ratio * (windowSize.width - panelWidth));
    EXPECT_EQ(kept.size.height, ratio * windowSize.height);
    EXPECT_EQ(difference(cut(kept, dense(scene)), seen), 0.0);
    sgview::Picture const whole = keep(true);
    EXPECT_EQ(whole.size.width, ratio * windowSize.width);
    quitWell();
}

TEST_F(DenseScreen, LooksLikeAnyScreenButSharper)
{
    constexpr int square = 20;                              // points
    constexpr Region compared{0, 0, windowSize.width, 460}; // below, the panel tells times
    auto const switchAllOn = [this] {
        for (unsigned long const key : {XK_Home, XK_k, XK_x, XK_n, XK_g, XK_w, XK_u, XK_1})
            user->type(key);
    };
    ASSERT_NO_FATAL_FAILURE(openCreature());
    sgview::Picture const before = still(dense(scene));
    switchAllOn();
    static_cast<void>(changed(dense(scene), before));
    auto const sharp = means(still(dense(compared)), ratio * square);
    quitWell();

    compositor.reset();
    user.reset();
    server.reset();
    startDisplay(windowSize);
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {"--technique", "plain"}));
    sgview::Picture const unchanged = still(scene);
    switchAllOn();
    static_cast<void>(changed(scene, unchanged));
    auto const plain = means(still(compared), square);
    quitWell();

    EXPECT_LT(farthest(sharp, plain), 20.0);
}

TEST_F(DenseScreen, TakesThePointerWhereItPoints)
{
    ASSERT_NO_FATAL_FAILURE(openCreature());
    sgview::Picture const first = still(dense(scene));
    drag(300, 300, 420, 340);
    EXPECT_GT(difference(changed(dense(scene), first), first), 0.05);
    drag(420, 340, 300, 300);
    EXPECT_TRUE(returnsTo(dense(scene), first));

    constexpr int y = windowSize.height - 34; // where the moment of the animation is chosen
    drag(270, y, 350, y);
    EXPECT_GT(difference(changed(dense(scene), first), first), 0.02);
    drag(350, y, 200, y);
    EXPECT_TRUE(returnsTo(dense(scene), first)) << "the view is orbited as well";
    quitWell();
}

TEST_F(DenseScreen, SplitsInTheMiddle)
{
    ASSERT_NO_FATAL_FAILURE(openCreature());
    sgview::Picture const whole = still(dense(scene));
    user->type(XK_s);
    static_cast<void>(changed(dense(scene), whole));
    sgview::Picture const left = still(dense({10, 130, 310, 150}));
    EXPECT_GT(shareOtherThan(left, 219, 224, 230), 0.2);
    EXPECT_LT(difference(left, still(dense({342, 130, 310, 150}))), 0.01);
    EXPECT_LT(shareOtherThan(still(dense({10, 300, 310, 250})), 0, 0, 0), 0.05);
    quitWell();
}

} // namespace
