#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

namespace {

/// Windows in which not everything has room.
class SmallWindow : public WindowTest {
protected:
    /// Waits until a model's name is the title; regions of a usual window lie outside of this one.
    void openSmall(std::string const& model, std::string const& size)
    {
        ASSERT_NO_FATAL_FAILURE(open({model, "--size", size, "--technique", "plain"}));
        std::string const name = std::filesystem::path(model).filename().string();
        ASSERT_TRUE(eventually([&] { return user->title() == name + " - sgview"; })) << errors();
        static_cast<void>(still(all()));
    }

    [[nodiscard]] Region all() const
    {
        sgview::PictureSize const size = user->size();
        return {0, 0, size.width, size.height};
    }

    [[nodiscard]] static double shareOfModel(sgview::Picture const& picture, Region const& region)
    {
        return shareOtherThan(cut(picture, region), 219, 224, 230);
    }
};

TEST_F(SmallWindow, FitsTheModelBetweenItsBars)
{
    ASSERT_NO_FATAL_FAILURE(openSmall(CREATURE, "640x480"));
    for (unsigned long const key : {XK_Home, XK_1, XK_3, XK_5}) {
        sgview::Picture const before = still(all());
        user->type(key);
        if (key != XK_Home)
            static_cast<void>(changed(all(), before));
        sgview::Picture const kept = keep();
        ASSERT_EQ(kept.size, (sgview::PictureSize{640, 480}));
        EXPECT_EQ(shareOfModel(kept, {0, 0, 640, 52}), 0.0) << "behind the status, key " << key;
        EXPECT_EQ(shareOfModel(kept, {0, 480 - 64, 640, 64}), 0.0) << "behind the playback bar, key " << key;
        EXPECT_GT(shareOfModel(kept, {0, 52, 640, 480 - 64 - 52}), 0.1) << key;
    }
    quitWell();
}

TEST_F(SmallWindow, SaysThatThePanelHasNoRoom)
{
    ASSERT_NO_FATAL_FAILURE(openSmall(CREATURE, "640x480"));
    constexpr Region notices{12, 360, 500, 50};
    for (unsigned long const key : {XK_Tab, XK_d}) {
        sgview::Picture const silence = still(notices);
        user->type(key);
        EXPECT_GT(difference(changed(notices, silence), silence), 0.1) << key;
        user->type(XK_Escape);
        EXPECT_TRUE(returnsTo(notices, silence));
    }
    // Neither key has hidden it: with room it is there.
    constexpr sgview::PictureSize wide{900, 600};
    user->resize(wide);
    EXPECT_TRUE(eventually([&] { return user->size() == wide; }));
    EXPECT_TRUE(eventually([&] {
        Region const itsPlace{wide.width - panelWidth + 5, 0, panelWidth - 10, wide.height};
        return shareOtherThan(look(itsPlace), 219, 224, 230) > 0.99;
    }));
    quitWell();
}

TEST_F(SmallWindow, LeavesTheModelTheMostOfAVerySmallOne)
{
    ASSERT_NO_FATAL_FAILURE(openSmall(CREATURE, "320x200"));
    sgview::Picture const seen = still(all());
    EXPECT_EQ(shareOfModel(seen, {0, 0, 320, 2}), 0.0);
    EXPECT_GT(shareOfModel(seen, {100, 10, 120, 110}), 0.2) << "the model";
    EXPECT_LT(shareOfModel(seen, {12, 0, 80, 40}), 0.2) << "no status";
    // The bar ends before the window does.
    EXPECT_GT(shareOfModel(seen, {16, 150, 288, 30}), 0.95) << "the playback bar";
    EXPECT_EQ(shareOfModel(seen, {310, 140, 10, 60}), 0.0);

    user->type(XK_s);
    sgview::Picture const split = changed(all(), seen);
    EXPECT_GT(shareOfModel(split, {2, 0, 150, 60}), 0.1) << "the left picture";
    EXPECT_GT(shareOfModel(split, {170, 0, 140, 60}), 0.1) << "the right picture";
    quitWell();
}

} // namespace
