#include "Tests/Window/WindowTesting.h"
#include "Viewer/Platform/PngWriter.h"

#include <X11/keysym.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;

constexpr unsigned left = 1;
constexpr unsigned middle = 2;
constexpr unsigned right = 3;
constexpr unsigned wheelUp = 4;
constexpr unsigned wheelDown = 5;

class View : public WindowTest {
protected:
    /// Draws the same with `sgview render`.
    [[nodiscard]] sgview::Picture render(std::vector<std::string> arguments, sgview::PictureSize size) const
    {
        arguments.insert(arguments.begin(), "render");
        return draw(std::move(arguments), size);
    }
};

TEST_F(View, OpensAModelAndQuits)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    EXPECT_EQ(user->size().width, windowSize.width);
    EXPECT_EQ(user->size().height, windowSize.height);
    double const share = shareOtherThan(still(scene), 219, 224, 230);
    EXPECT_GT(share, 0.25);
    EXPECT_LT(share, 0.8);
    quitWell();
}

TEST_F(View, StandsEmptyWithoutAFile)
{
    ASSERT_NO_FATAL_FAILURE(open({}));
    sgview::Picture const empty = still(scene);
    double const share = shareOtherThan(empty, 219, 224, 230); // the words that say what to do
    EXPECT_GT(share, 0.02);
    EXPECT_LT(share, 0.25);
    EXPECT_EQ(user->title(), "sgview");
    for (unsigned long const key : {XK_space, XK_f, XK_t, XK_r, XK_Page_Down, XK_period, XK_a, XK_Home, XK_u})
        user->type(key);
    EXPECT_TRUE(returnsTo(scene, empty));
    quitWell();
}

TEST_F(View, ShowsThePictureOfRender)
{
    std::vector<std::string> const options{"--azimuth", "-40",        "--elevation",    "12",
                                           "--zoom",    "1.3",        "--background",   "#204060",
                                           "--mirror",  "--colorize", "#ffe0c0,#301040"};
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, options));
    user->type(XK_a, true); // the rest pose, which render draws
    user->type(XK_Home);
    static_cast<void>(still(scene));
    sgview::Picture const kept = keep();
    std::vector<std::string> arguments{CREATURE};
    arguments.insert(arguments.end(), options.begin(), options.end());
    EXPECT_EQ(kept.size.width, windowSize.width - panelWidth);
    EXPECT_EQ(kept.size.height, windowSize.height);
    sgview::Picture const between = cut(kept, betweenBars);
    sgview::Picture const rendered = render(arguments, between.size);
    EXPECT_LT(difference(between, rendered), 0.03); // edges are smoother in the window
    EXPECT_GT(shareOtherThan(rendered, 0x20, 0x40, 0x60), 0.2);
}

TEST_F(View, DrawsUnlitAndWireframeAsRenderDoes)
{
    for (char const* option : {"--unlit", "--wireframe"}) {
        ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {option, "--background", "#ffffff"}));
        user->type(XK_a, true);
        user->type(XK_Home);
        static_cast<void>(still(scene));
        sgview::Picture const kept = cut(keep(), betweenBars);
        sgview::Picture const rendered = render({CREATURE, option}, kept.size);
        sgview::Picture const usual = render({CREATURE}, kept.size);
        EXPECT_LT(difference(kept, rendered), 0.7 * difference(kept, usual)) << option;
        quitWell();
    }
}

TEST_F(View, OrbitsPansAndZoomsAndComesBack)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const first = still(scene);

    user->drag(left, 300, 300, 420, 340);
    sgview::Picture const orbited = changed(scene, first);
    EXPECT_GT(difference(orbited, first), 0.05);
    user->drag(left, 420, 340, 300, 300); // the same way back
    EXPECT_TRUE(returnsTo(scene, first));

    for (unsigned const button : {right, middle}) {
        user->drag(button, 300, 300, 400, 250);
        EXPECT_GT(difference(changed(scene, first), first), 0.05);
        user->drag(button, 400, 250, 300, 300);
        EXPECT_TRUE(returnsTo(scene, first));
    }

    user->moveTo(200, 300);
    user->click(wheelUp);
    EXPECT_GT(difference(changed(scene, first), first), 0.02);
    user->click(wheelDown);
    EXPECT_TRUE(returnsTo(scene, first));

    user->click(wheelDown);
    user->drag(left, 300, 300, 350, 320);
    static_cast<void>(changed(scene, first));
    user->type(XK_Home);
    EXPECT_TRUE(returnsTo(scene, first));
}

TEST_F(View, KeysTurnTheView)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const first = still(scene);
    for (auto const& [there, back] : {std::pair(XK_Left, XK_Right), std::pair(XK_Up, XK_Down),
                                      std::pair(XK_plus, XK_minus), std::pair(XK_o, XK_o)}) {
        user->type(there, there == XK_plus);
        EXPECT_GT(difference(changed(scene, first), first), 0.01) << there;
        user->type(back);
        EXPECT_TRUE(returnsTo(scene, first)) << back;
    }
    // Each standard view is another picture.
    std::vector<sgview::Picture> sides{first};
    for (unsigned long const key : {XK_1, XK_2, XK_3, XK_4, XK_5, XK_6}) {
        user->type(key);
        sides.push_back(changed(scene, sides.back()));
        for (std::size_t i = 0; i + 1 < sides.size(); ++i)
            EXPECT_GT(difference(sides.back(), sides[i]), 0.01) << key;
    }
    user->type(XK_u); // and so is another axis up
    EXPECT_GT(difference(changed(scene, sides.back()), sides.back()), 0.01);
}

TEST_F(View, FitsByKeyAndDoubleClick)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    user->type(XK_a, true);
    user->type(XK_f);
    sgview::Picture const fitted = still(scene);
    for (bool const byKey : {true, false}) {
        user->drag(right, 300, 300, 500, 350);
        static_cast<void>(changed(scene, fitted));
        if (byKey)
            user->type(XK_f);
        else {
            user->moveTo(60, 420);
            user->click(left);
            user->click(left);
        }
        EXPECT_TRUE(returnsTo(scene, fitted));
    }
}

TEST_F(View, HidesThePanelAndShowsTheHelp)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const withPanel = still(panel);
    EXPECT_GT(shareOtherThan(withPanel, 219, 224, 230), 0.99);
    user->type(XK_Tab);
    sgview::Picture const without = changed(panel, withPanel);
    EXPECT_LT(shareOtherThan(without, 219, 224, 230), 0.8);
    user->type(XK_Tab);
    EXPECT_TRUE(eventually([&] { return shareOtherThan(look(panel), 219, 224, 230) > 0.99; }));

    sgview::Picture const view = still(scene);
    user->type(XK_F1);
    sgview::Picture const help = changed(scene, view);
    EXPECT_LT(shareOtherThan(help, 33, 38, 43), 0.6); // mostly the help's own ground
    user->type(XK_Escape);
    EXPECT_TRUE(returnsTo(scene, view));
}

TEST_F(View, RemembersWhichSectionsOfThePanelAreOpen)
{
    constexpr Region belowTitle{panel.x, 40, panel.width, 250}; // which the pointer makes lighter
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    sgview::Picture const unfolded = still(belowTitle);
    user->moveTo(panel.x + 100, 22);
    user->click(left);
    sgview::Picture const folded = changed(belowTitle, unfolded);
    quitWell();
    EXPECT_TRUE(fs::exists(home / ".config/sgview/preferences"));
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    EXPECT_TRUE(returnsTo(belowTitle, folded));
    quitWell();
}

TEST_F(View, KeepsPicturesUnderTheNameAskedFor)
{
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {"--screenshot-name", "{model}_{number}"}));
    sgview::Picture const seen = still(scene);
    sgview::Picture const kept = keep();
    EXPECT_EQ(keptPictures(), std::vector<fs::path>{home / "Pictures/creature_1.png"});
    EXPECT_EQ(kept.size.width, windowSize.width - panelWidth);
    // The picture is what was to be seen, without what lies over it.
    EXPECT_EQ(difference(cut(kept, scene), seen), 0.0);

    sgview::Picture const whole = keep(true);
    EXPECT_EQ(keptPictures().back(), home / "Pictures/creature_2.png");
    EXPECT_EQ(whole.size, windowSize);
}

TEST_F(View, SaysWhereAPictureCouldNotBeKept)
{
    std::ofstream(home / "Pictures") << "a file where the folder ought to be";
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    Region const notices{12, 470, 600, 90};
    sgview::Picture const before = still(notices);
    user->type(XK_p);
    static_cast<void>(changed(notices, before));
    quitWell();
}

TEST_F(View, LooksForTexturesInNamedFolders)
{
    std::ofstream(folder / "crate.obj")
        << "mtllib crate.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvt 0 0\nvn 0 0 1\n"
           "usemtl m\nf 1/1/1 2/1/1 3/1/1 4/1/1\n";
    std::ofstream(folder / "crate.mtl") << "newmtl m\nKd 1 1 1\nmap_Kd red.png\n";
    fs::create_directory(folder / "pictures");
    sgview::Picture red({4, 4});
    for (std::size_t i = 0; i < red.pixels.size(); i += 4)
        red.pixels[i] = 255;
    sgview::writePng(folder / "pictures/red.png", red);
    ASSERT_NO_FATAL_FAILURE(
        openModel((folder / "crate.obj").string(),
                  {"--unlit", "--azimuth", "0", "--texture-folder", (folder / "pictures").string()}));
    EXPECT_LT(shareOtherThan(still(scene), 255, 0, 0), 0.9);
}

} // namespace
