#include "Viewer/Window/Gui.h"

#include "SceneGraph/SGRendererModule.h"
#include "Utilities/MemoryPrefs.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/HelpOverlay.h"
#include "Viewer/Window/Hud.h"
#include "Viewer/Window/Panel.h"
#include "Viewer/Window/Session.h"

#include <gtest/gtest.h>
#include <imgui_internal.h>

#include <cmath>
#include <string>
#include <thread>

namespace {

using sgview::inPixels;
using sgview::ScreenMeasures;

/// The interface in a window that nobody sees, brought from screen to screen.
class GuiTest : public testing::Test {
protected:
    static constexpr sgview::PictureSize points{1280, 800};

    void SetUp() override
    {
        session.open({CREATURE});
        while (session.document.load()) {
            static_cast<void>(session.update(std::chrono::steady_clock::now()));
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        ASSERT_TRUE(session.document.scene()) << session.document.failure();
        session.notices.tell("something that a person is to know");
        session.showsHelp = true;
    }

    /// Tests of widgets come after it in the same process.
    void TearDown() override { gui.adapt({points, points, 1.0}); }

    /// Builds some frames on a screen, so that all windows have found their sizes.
    void showOn(double pixelsPerPoint)
    {
        auto const pixels = [=](int side) { return static_cast<int>(std::lround(side * pixelsPerPoint)); };
        gui.adapt({points, {pixels(points.width), pixels(points.height)}, pixelsPerPoint});
        session.setArea(static_cast<double>(points.width) - static_cast<double>(sgview::Panel::width),
                        points.height);
        for (int i = 0; i < 4; ++i) {
            gui.begin();
            ImVec2 const all = ImGui::GetIO().DisplaySize;
            hud.build(session, {all.x - inPixels(sgview::Panel::width), all.y});
            panel.build(session);
            sgview::buildHelp(all);
            gui.end();
        }
    }

    static ImGuiWindow const& window(char const* name) { return *ImGui::FindWindowByName(name); }

    static std::vector<ImGuiWindow const*> windows()
    {
        std::vector<ImGuiWindow const*> shown;
        for (char const* const name : {"panel", "status", "playback", "notices", "keys"})
            shown.push_back(&window(name));
        return shown;
    }

    sgview::HeadlessContext context{{160, 160}};
    SGRendererModule module;
    sgview::Session session{module.renderer(), {}, {sgview::Technique::plain, "for a test"}};
    sgview::Panel panel{make_smart<MemoryPrefs>()};
    sgview::Hud hud;
    sgview::Gui gui{SDL_GL_GetCurrentWindow(), SDL_GL_GetCurrentContext()};
};

/// Place and size of everything, in points.
std::vector<float> arrangement(std::vector<ImGuiWindow const*> const& windows)
{
    float const point = inPixels(100.0F) / 100.0F;
    std::vector<float> all;
    for (ImGuiWindow const* const window : windows)
        for (float const pixels : {window->Pos.x, window->Pos.y, window->Size.x, window->Size.y})
            all.push_back(pixels / point);
    return all;
}

TEST_F(GuiTest, FollowsTheWindowFromScreenToScreen)
{
    showOn(1.0);
    float const letters = ImGui::GetFontSize();
    std::vector<float> const first = arrangement(windows());
    for (double const scale : {2.0, 1.25, 3.0, 1.0, 1.5, 1.75, 1.0}) {
        showOn(scale);
        auto const times = static_cast<float>(scale);
        EXPECT_EQ(ImGui::GetFontSize(), std::round(letters * times)) << scale;
        EXPECT_EQ(ImGui::GetStyle().WindowPadding.x, 12.0F * times) << scale;
        EXPECT_EQ(window("panel").Size.x, 340.0F * times) << scale;
        std::vector<float> const now = arrangement(windows());
        ASSERT_EQ(now.size(), first.size());
        for (std::size_t i = 0; i < now.size(); ++i)
            EXPECT_NEAR(now[i], first[i], scale == 1.0 ? 0.0 : 12.0) << scale << ", number " << i;
    }
}

TEST_F(GuiTest, CutsNothingOff)
{
    for (double const scale : {1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 2.5}) {
        showOn(scale);
        for (ImGuiWindow const* const shown : windows()) {
            float const room = shown->Size.x - shown->ScrollbarSizes.x - 2.0F * shown->WindowPadding.x;
            EXPECT_LE(shown->ContentSize.x, room + 1.0F) << shown->Name << " at " << scale;
            if (std::string(shown->Name) != "panel") { // that is scrolled
                EXPECT_LE(shown->ContentSize.y, shown->Size.y - 2.0F * shown->WindowPadding.y + 1.0F)
                    << shown->Name << " at " << scale;
            }
        }
    }
}

TEST_F(GuiTest, PutsLettersOnWholePixels)
{
    for (double const scale : {1.0, 1.1, 1.25, 1.5, 1.75, 2.0}) {
        showOn(scale);
        ImDrawData const& drawn = *ImGui::GetDrawData();
        ASSERT_EQ(drawn.FramebufferScale.x, 1.0F);
        ImFontAtlas const& atlas = *ImGui::GetIO().Fonts;
        std::size_t letters = 0;
        std::size_t between = 0;
        for (int list = 0; list < drawn.CmdListsCount; ++list)
            for (ImDrawVert const& vertex : drawn.CmdLists[list]->VtxBuffer) {
                bool const isFill =
                    vertex.uv.x == atlas.TexUvWhitePixel.x && vertex.uv.y == atlas.TexUvWhitePixel.y;
                bool isLine = false;
                for (ImVec4 const& line : atlas.TexUvLines)
                    isLine = isLine || vertex.uv.y == line.y || vertex.uv.y == line.w;
                if (isFill || isLine)
                    continue;
                ++letters;
                between += vertex.pos.y == std::round(vertex.pos.y) ? 0 : 1;
            }
        EXPECT_GT(letters, 1000U) << scale;
        EXPECT_EQ(between, 0U) << scale;
    }
}

TEST_F(GuiTest, FitsIntoTexturesOfOldCards)
{
    constexpr int side = 4096;
    for (double const scale : {1.0, 2.0, ScreenMeasures::largestScale}) {
        showOn(scale);
        EXPECT_LE(ImGui::GetIO().Fonts->TexWidth, side) << scale;
        EXPECT_LE(ImGui::GetIO().Fonts->TexHeight, side) << scale;
    }
}

} // namespace
