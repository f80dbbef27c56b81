#include "Tests/Unit/Utilities/TemporaryFolder.h"
#include "Tests/Window/PanelTesting.h"

namespace {

using sgview::none;
using sgview::Picture;

class PlaybackBar : public PanelTest {};

TEST_F(PlaybackBar, PlaysAndPauses)
{
    open(CREATURE);
    widgets.click({"playback", "Play"});
    EXPECT_TRUE(session.playback.isPlaying());
    EXPECT_TRUE(widgets.hasTip({"playback", "Pause"}));
    widgets.click({"playback", "Pause"});
    EXPECT_FALSE(session.playback.isPlaying());
}

TEST_F(PlaybackBar, ScrubsToAnyMoment)
{
    open(CREATURE);
    Picture const start = picture();
    double const length = session.playback.length();
    ASSERT_GT(length, 0.0);
    for (float const part : {0.25F, 0.75F, 0.5F}) {
        widgets.click({"playback", "##position"}, part);
        EXPECT_NEAR(session.playback.position(), static_cast<double>(part) * length, 0.02 * length);
        EXPECT_GT(shareThatDiffers(picture(), start), 0.01);
    }
    widgets.click({"playback", "##position"}, 0.001F);
    EXPECT_EQ(session.playback.position(), 0.0);
    EXPECT_EQ(picture().pixels, start.pixels);
}

TEST_F(PlaybackBar, ChoosesTheAnimation)
{
    open(CREATURE);
    ASSERT_EQ(session.playback.animation(), 0);
    Picture const swim = picture();
    widgets.click({"playback", "##animation"});
    widgets.click({"##Combo_00", 1, "look"});
    EXPECT_EQ(session.playback.animation(), 1);
    widgets.click({"playback", "##position"}, 0.4F);
    EXPECT_GT(shareThatDiffers(picture(), swim), 0.005);
    widgets.click({"playback", "##animation"});
    widgets.click({"##Combo_00", none, "rest pose"});
    EXPECT_EQ(session.playback.animation(), none);
    EXPECT_EQ(session.playback.length(), 0.0);
}

TEST_F(PlaybackBar, ChangesSpeedAndLoop)
{
    open(CREATURE);
    widgets.click({"playback", "##speed"});
    widgets.click({"##Combo_00", "0.25x"});
    EXPECT_EQ(session.playback.speed(), 0.25);
    widgets.click({"playback", "##speed"});
    widgets.click({"##Combo_00", "16x"});
    EXPECT_EQ(session.playback.speed(), 16.0);
    widgets.click({"playback", "loop"}, 0.1F);
    EXPECT_FALSE(session.playback.isLooping());
    widgets.click({"playback", "loop"}, 0.1F);
    EXPECT_TRUE(session.playback.isLooping());
}

TEST_F(PlaybackBar, DropsWhatHasNoRoomInANarrowWindow)
{
    open(CREATURE);
    struct Stage {
        float width;
        bool hasAnimation, hasSpeed, hasLoop;
    };
    for (Stage const& stage : {Stage{660.0F, true, true, true}, Stage{500.0F, true, true, false},
                               Stage{420.0F, true, false, false}, Stage{320.0F, false, false, false},
                               Stage{200.0F, false, false, false}}) {
        area.x = stage.width;
        widgets.settle();
        EXPECT_EQ(widgets.has({"playback", "##animation"}), stage.hasAnimation) << stage.width;
        EXPECT_EQ(widgets.has({"playback", "##speed"}), stage.hasSpeed) << stage.width;
        EXPECT_EQ(widgets.has({"playback", "loop"}), stage.hasLoop) << stage.width;
        EXPECT_TRUE(widgets.has({"playback", "Play"})) << stage.width;
        EXPECT_LT(widgets.rightEdgeOf({"playback", stage.hasLoop ? "loop" : "##position"}),
                  stage.width - 12.0F);
        widgets.click({"playback", "##position"}, 0.5F);
        EXPECT_NEAR(session.playback.position(), session.playback.length() / 2.0,
                    0.05 * session.playback.length());
    }
}

TEST_F(PlaybackBar, StaysAtItsMomentWhenTheFileIsReadAgain)
{
    TemporaryFolder const folder;
    std::filesystem::path const file = folder.path() / "creature.glb";
    std::filesystem::copy_file(CREATURE, file);
    open(file);
    session.chooseNeighbour(1);
    widgets.click({"playback", "##position"}, 0.4F);
    double const moment = session.playback.position();
    ASSERT_GT(moment, 0.0);
    Picture const before = picture();
    int const generation = session.document.generation();
    session.document.reload();
    await();
    EXPECT_EQ(session.document.generation(), generation + 1);
    EXPECT_EQ(session.playback.animation(), 1);
    EXPECT_EQ(session.playback.position(), moment);
    EXPECT_FALSE(session.playback.isPlaying());
    EXPECT_EQ(picture().pixels, before.pixels);
}

} // namespace
