#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

#include <cmath>

namespace {

/// X displays, whose pixels are all the same to programs: desktops say by a resource how dense they are.
class InterfaceScale : public WindowTest {
protected:
    static constexpr int square = 20; // points

    /// A display that is as many times as dense.
    void startDense(double scale)
    {
        program.reset();
        user.reset();
        server.reset();
        startDisplay(scaled(windowSize, scale));
        user->setResources("Xcursor.size:\t24\nXft.dpi:\t" + std::to_string(96.0 * scale) + "\n");
    }

    static sgview::PictureSize scaled(sgview::PictureSize size, double scale)
    {
        return {static_cast<int>(std::lround(size.width * scale)),
                static_cast<int>(std::lround(size.height * scale))};
    }

    static Region scaled(Region const& region, double scale)
    {
        auto const times = [scale](int points) { return static_cast<int>(std::lround(points * scale)); };
        return {times(region.x), times(region.y), times(region.width), times(region.height)};
    }

    /// What the window shows with everything switched on: the mean colours of squares of some points.
    std::vector<MeanColor> everything(double scale, std::vector<std::string> const& options = {})
    {
        // The panel is long: parts of pixels that its lines are rounded by add up.
        constexpr Region compared{0, 0, windowSize.width - panelWidth, windowSize.height};
        std::vector<std::string> arguments{"--technique", "plain"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        openModel(CREATURE, arguments);
        if (HasFatalFailure())
            return {};
        EXPECT_EQ(user->size(), scaled(windowSize, scale));
        sgview::Picture const before = still(scaled(scene, scale));
        for (unsigned long const key : {XK_Home, XK_k, XK_x, XK_n, XK_g, XK_w, XK_u, XK_1})
            user->type(key);
        static_cast<void>(changed(scaled(scene, scale), before));
        sgview::Picture const kept = keep();
        EXPECT_EQ(kept.size,
                  scaled(sgview::PictureSize{windowSize.width - panelWidth, windowSize.height}, scale));
        user->type(XK_Escape); // the notice of it
        return means(still(scaled(compared, scale)), static_cast<int>(std::lround(square * scale)));
    }
};

TEST_F(InterfaceScale, LooksTheSameOnADenserScreen)
{
    constexpr double scale = 1.25;
    std::vector<MeanColor> const usual = everything(1.0);
    quitWell();
    startDense(scale);
    EXPECT_LT(farthest(everything(scale), usual), 25.0);
    quitWell();
}

TEST_F(InterfaceScale, IsWhatAPersonAsksFor)
{
    startDense(2.0);
    std::vector<MeanColor> const usual = everything(1.0, {"--ui-scale", "1"});
    quitWell();
    user->setResources("Xft.dpi: 96");
    EXPECT_LT(farthest(everything(1.5, {"--ui-scale", "1.5"}), usual), 25.0);
    quitWell();
}

TEST_F(InterfaceScale, TakesThePointerWhereItPoints)
{
    constexpr double scale = 1.5;
    startDense(scale);
    auto const at = [](int points) { return static_cast<int>(std::lround(points * scale)); };
    auto const drag = [&](int fromX, int fromY, int toX, int toY) {
        user->drag(1, at(fromX), at(fromY), at(toX), at(toY));
        user->moveTo(at(windowSize.width - 20), at(windowSize.height - 20));
    };
    Region const view = scaled(scene, scale);
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const first = still(view);
    drag(300, 300, 420, 340);
    EXPECT_GT(difference(changed(view, first), first), 0.05);
    drag(420, 340, 300, 300);
    EXPECT_TRUE(returnsTo(view, first));

    constexpr int y = windowSize.height - 34; // where the moment of the animation is chosen
    drag(270, y, 350, y);
    EXPECT_GT(difference(changed(view, first), first), 0.02);
    drag(350, y, 200, y);
    EXPECT_TRUE(returnsTo(view, first)) << "the view is orbited as well";
    quitWell();
}

TEST_F(InterfaceScale, OpensNoLargerThanTheScreen)
{
    user->setResources("Xft.dpi: 192");
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {"--size", "1000x300"}));
    EXPECT_EQ(user->size(), (sgview::PictureSize{1280, 600}));
    quitWell();
}

} // namespace
