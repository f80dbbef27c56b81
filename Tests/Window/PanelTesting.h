#pragma once

#include "SceneGraph/SGRendererModule.h"
#include "Tests/Window/Widgets.h"
#include "Utilities/MemoryPrefs.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Window/Hud.h"
#include "Viewer/Window/Panel.h"
#include "Viewer/Window/ScenePainter.h"
#include "Viewer/Window/Session.h"

#include <gtest/gtest.h>

/// A session as the window holds it, with the panel and what lies over the view, and somebody who uses their
/// widgets. Nobody sees it: there is neither a display nor a clock that goes by itself.
class PanelTest : public testing::Test {
protected:
    static constexpr sgview::PictureSize pictureSize{160, 160};

    PanelTest();

    /// Opens a model and waits until it is there.
    void open(std::filesystem::path const& file);

    /// Waits until the load that goes on has ended.
    void await();

    /// Draws a frame as the window does.
    void draw();

    /// The picture of a frame.
    [[nodiscard]] sgview::Picture picture();

    [[nodiscard]] sgview::ModelInstance& instance() { return session.document.scene()->instance(); }

    sgview::HeadlessContext context{pictureSize};
    SGRendererModule module;
    sgview::Session session{module.renderer(), {}, {sgview::Technique::plain, "for a test"}};
    smart_ptr<MemoryPrefs> memory = make_smart<MemoryPrefs>();
    sgview::Panel panel{memory};
    sgview::Hud hud;
    sgview::ScenePainter painter;
    ImVec2 area{1000.0F - sgview::Panel::width, 4000.0F}; ///< that shows the model
    Widgets widgets{{1000.0F, 4000.0F}, [this] {
                        hud.build(session, area);
                        panel.build(session);
                    }};
};

/// Part of the pixels that differ between two pictures of one size, by the measure of the diagnostic, 0 to 1.
[[nodiscard]] double shareThatDiffers(sgview::Picture const& a, sgview::Picture const& b);
