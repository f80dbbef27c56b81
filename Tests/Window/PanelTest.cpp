#include "Tests/Window/PanelTesting.h"

#include "Tests/Unit/Utilities/TemporaryFolder.h"
#include "Viewer/Window/DisplaySwitches.h"
#include "Viewer/Window/TimingSection.h"

#include <gmock/gmock.h>

#include <fstream>

namespace {

using sgview::Picture;

constexpr char const* crane = TEST_MODELS "/rigid.gltf";

/// What is written on the parts of the crane: its jib stands between the pillar and the hook.
struct CraneParts : PanelTest {
    [[nodiscard]] std::size_t part(std::string const& name)
    {
        for (std::size_t i = 0; i < instance().partCount(); ++i)
            if (instance().part(i).name == name)
                return i;
        ADD_FAILURE() << "no part " << name;
        return 0;
    }
};

TEST_F(PanelTest, ShowsNothingToChangeWithoutAModel)
{
    widgets.click({"panel", "Scene tree"});
    widgets.click({"panel", "Materials"});
    widgets.click({"panel", "Lights"});
    EXPECT_FALSE(widgets.has({"panel", "Materials", "##material"}));
    EXPECT_FALSE(widgets.has({"panel", "Lights", "add a light"}));
    EXPECT_FALSE(widgets.has({"playback", "##position"}));
}

TEST_F(PanelTest, CountsABoneOnceWhereASurfaceIsSplit)
{
    open(TEST_MODELS "/skinManyBones.gltf");
    EXPECT_GT(session.document.scene()->model().skins.size(), 1U);
    EXPECT_EQ(session.document.counts().bones, 216U);
    EXPECT_EQ(session.document.counts().surfaces, 4U);
}

TEST_F(PanelTest, FoldsItsSections)
{
    open(CREATURE);
    ASSERT_TRUE(widgets.has({"panel", "View", "grid"}));
    widgets.click({"panel", "View"});
    EXPECT_FALSE(widgets.has({"panel", "View", "grid"}));
    widgets.click({"panel", "View"});
    EXPECT_TRUE(widgets.has({"panel", "View", "grid"}));
}

TEST_F(PanelTest, RemembersWhichSectionsAreOpen)
{
    widgets.click({"panel", "View"});
    widgets.click({"panel", "Lights"});
    session.showDiagnostic();
    widgets.settle();
    EXPECT_TRUE(widgets.has({"panel", "Graphics diagnostic", "Measure now"}));

    panel = sgview::Panel(memory);
    widgets.forget();
    open(CREATURE);
    EXPECT_FALSE(widgets.has({"panel", "View", "grid"}));
    EXPECT_TRUE(widgets.has({"panel", "Lights", "add a light"}));
    EXPECT_TRUE(widgets.has({"panel", "Technique", "plain"}));
    EXPECT_FALSE(widgets.has({"panel", "Graphics diagnostic", "Measure now"})) << "opened by a key";
    widgets.click({"panel", "View"});
    EXPECT_TRUE(widgets.has({"panel", "View", "grid"}));
}

TEST_F(PanelTest, HasTheModelBeforeWhatIsForTheCurious)
{
    open(CREATURE);
    EXPECT_TRUE(widgets.has({"panel", "View", "grid"}));
    EXPECT_TRUE(widgets.has({"panel", "Technique", "plain"}));
    EXPECT_FALSE(widgets.has({"panel", "Graphics diagnostic", "Measure now"}));
    EXPECT_FALSE(sgview::TimingSection().isOpenAtFirst());
    float above = 0.0F;
    for (char const* const title : {"Model", "Technique", "View", "Scene tree", "Materials", "Lights",
                                    "Graphics diagnostic", "Timing"}) {
        float const at = widgets.heightOf({"panel", title});
        EXPECT_GT(at, above) << title;
        above = at;
    }
}

TEST_F(PanelTest, TellsWhatWasLeftOutOfAModel)
{
    TemporaryFolder const folder;
    std::filesystem::path const file = folder.path() / "bare.obj";
    std::ofstream(file) << "mtllib bare.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\n"
                           "usemtl m\nf 1/1 2/1 3/1\n";
    std::ofstream(folder.path() / "bare.mtl") << "newmtl m\nmap_Kd lost.png\n";
    open(file);
    ASSERT_EQ(session.document.scene()->model().warnings.size(), 1U);
    ASSERT_EQ(session.notices.all().size(), 1U);
    EXPECT_THAT(session.notices.all()[0].text,
                testing::AllOf(testing::StartsWith("Warning: "), testing::HasSubstr("lost.png")));
    float const unfolded = widgets.heightOf({"panel", "Technique"});
    widgets.click({"panel", "Model", "warnings"}, 0.1F);
    EXPECT_LT(widgets.heightOf({"panel", "Technique"}), unfolded - 10.0F);

    session.document.reload();
    await();
    EXPECT_THAT(session.notices.all().back().text, testing::HasSubstr("lost.png"));
    open(CREATURE);
    EXPECT_TRUE(session.notices.all().empty());
    EXPECT_FALSE(widgets.has({"panel", "Model", "warnings"}));
}

TEST_F(PanelTest, SaysThatAFolderHasNoModel)
{
    open(CREATURE);
    TemporaryFolder const folder;
    session.open({folder.path()});
    EXPECT_FALSE(session.document.load());
    ASSERT_EQ(session.notices.all().size(), 1U);
    EXPECT_EQ(session.notices.all()[0].text, folder.path().string() + ": a folder without a model in it");
    EXPECT_EQ(session.neighbours.current(), CREATURE) << "what was shown stays";
}

TEST_F(PanelTest, SwitchesWhatIsShown)
{
    open(CREATURE);
    Picture const plain = picture();
    for (sgview::DisplaySwitch const& one : sgview::displaySwitches) {
        widgets.click({"panel", "View", one.text});
        EXPECT_TRUE(session.display.*one.option) << one.text;
        EXPECT_GT(shareThatDiffers(picture(), plain), 0.001) << one.text;
        EXPECT_TRUE(widgets.hasTip({"panel", "View", one.text})) << one.text;
        widgets.click({"panel", "View", one.text});
        EXPECT_FALSE(session.display.*one.option) << one.text;
        EXPECT_EQ(picture().pixels, plain.pixels) << one.text;
    }
}

TEST_F(PanelTest, MapsTheBoneThatIsChosen)
{
    open(CREATURE);
    widgets.click({"panel", "View", "influence map"});
    Picture const first = picture();
    widgets.click({"panel", "View", "##bone"});
    widgets.click({"##Combo_00", 3, "head"});
    EXPECT_EQ(session.document.appearance()->influences().chosen(), 3U);
    EXPECT_GT(shareThatDiffers(picture(), first), 0.01);
}

TEST_F(PanelTest, ChangesALight)
{
    open(CREATURE);
    Picture const usual = picture();
    widgets.click({"panel", "Lights"});
    std::vector<SGLightData>& lights = session.document.scene()->lights();
    ASSERT_EQ(lights.size(), 1U);

    Vector3 const before = lights[0].direction;
    widgets.click({"panel", "Lights", 0, "sideways"}, 0.9F);
    EXPECT_NE(lights[0].direction.z, before.z);
    EXPECT_LT(lights[0].direction.z, 0.0) << "from behind the model";
    EXPECT_GT(shareThatDiffers(picture(), usual), 0.05);

    float const sharpness = lights[0].diffuse.r;
    widgets.drag({"panel", "Lights", 0, "diffuse", "##X"}, -60.0F);
    EXPECT_LT(lights[0].diffuse.r, sharpness);

    widgets.click({"panel", "Lights", "as at first"});
    EXPECT_EQ(picture().pixels, usual.pixels);
}

TEST_F(PanelTest, AddsLightsAndTakesThemAway)
{
    open(CREATURE);
    Picture const usual = picture();
    widgets.click({"panel", "Lights"});
    std::vector<SGLightData> const& lights = session.document.scene()->lights();
    for (std::size_t count = 2; count <= 8; ++count) {
        widgets.click({"panel", "Lights", "add a light"});
        ASSERT_EQ(lights.size(), count);
    }
    EXPECT_FALSE(widgets.has({"panel", "Lights", "add a light"})) << "OpenGL has eight";
    EXPECT_GT(shareThatDiffers(picture(), usual), 0.05);
    for (std::size_t left = 8; left-- > 0;) {
        widgets.click({"panel", "Lights", 0, "light 1", "#CLOSE"});
        ASSERT_EQ(lights.size(), left);
    }
    EXPECT_GT(shareThatDiffers(picture(), usual), 0.05) << "drawn without light";
    widgets.click({"panel", "Lights", "add a light"});
    EXPECT_EQ(picture().pixels, usual.pixels) << "the first light is the one at first";
}

TEST_F(PanelTest, ChangesAMaterialAndPutsItBack)
{
    open(crane);
    Picture const usual = picture();
    widgets.click({"panel", "Materials"});
    sgview::MaterialEdits const& materials = session.document.appearance()->materials();
    widgets.click({"panel", "Materials", "##material"});
    widgets.click({"##Combo_00", 1, "paint"});
    EXPECT_FALSE(widgets.has({"panel", "Materials", "as in the file"}));

    widgets.drag({"panel", "Materials", "emissive", "##Y"}, 100.0F);
    EXPECT_GT(materials.look(1).material.emissive.g, 0.2F);
    EXPECT_FALSE(materials.isChanged(0)) << "the other stays";
    EXPECT_GT(shareThatDiffers(picture(), usual), 0.01);

    widgets.click({"panel", "Materials", "shininess"}, 0.5F);
    EXPECT_NEAR(materials.look(1).material.shininess, 64.0F, 3.0F);

    widgets.click({"panel", "Materials", "as in the file"});
    EXPECT_FALSE(materials.isChanged(1));
    EXPECT_EQ(picture().pixels, usual.pixels);
}

TEST_F(PanelTest, BlendsAMaterial)
{
    open(crane);
    Picture const opaque = picture();
    widgets.click({"panel", "Materials"});
    widgets.click({"panel", "Materials", "opacity"}, 0.3F);
    EXPECT_EQ(picture().pixels, opaque.pixels) << "opacity shows with blending only";
    widgets.click({"panel", "Materials", "blending"}, 0.1F);
    EXPECT_TRUE(session.document.appearance()->materials().look(0).blending);
    EXPECT_GT(shareThatDiffers(picture(), opaque), 0.01);
}

TEST_F(CraneParts, AreHiddenAndShown)
{
    open(crane);
    Picture const all = picture();
    widgets.click({"panel", "Scene tree"});
    std::size_t const hook = part("hook");
    auto const number = static_cast<int>(hook);
    EXPECT_FALSE(widgets.has({"panel", "Scene tree", "show all"}));
    widgets.click({"panel", "Scene tree", 0, "##node", 1, "##node", number, "hook"}, 0.1F);
    EXPECT_FALSE(instance().isShown(hook));
    Picture const without = picture();
    EXPECT_GT(shareThatDiffers(without, all), 0.001);

    widgets.click({"panel", "Scene tree", 0, "##node", 1, "##node", number, "alone"});
    EXPECT_TRUE(instance().isShown(hook));
    EXPECT_FALSE(instance().isShown(part("jib")));
    EXPECT_FALSE(instance().isShown(part("pillar")));

    widgets.click({"panel", "Scene tree", "show all"});
    EXPECT_EQ(picture().pixels, all.pixels);
}

TEST_F(PanelTest, TellsOfALoadThatWasCancelledAsOfNoError)
{
    open(CREATURE);
    session.notices.clear();
    session.open({crane});
    session.document.cancel();
    await();
    EXPECT_EQ(session.document.file(), CREATURE);
    ASSERT_EQ(session.notices.all().size(), 1U);
    EXPECT_FALSE(session.notices.all()[0].isError);
    EXPECT_THAT(session.notices.all()[0].text, testing::HasSubstr("loading was cancelled"));
}

} // namespace
