#include "Tests/Window/PanelTesting.h"

#include "Viewer/Platform/OpenGLErrors.h"
#include "Viewer/Platform/PictureDifference.h"
#include "Viewer/Window/FrameReader.h"

#include <thread>

PanelTest::PanelTest()
{
    // All has room, and what the bars leave free has the picture's shape.
    session.setArea(static_cast<double>(area.x), static_cast<double>(area.x) + sgview::ViewLayout::statusRow +
                                                     sgview::ViewLayout::playbackRow);
}

void PanelTest::open(std::filesystem::path const& file)
{
    session.open({file});
    await();
    ASSERT_EQ(session.document.file(), file) << session.document.failure();
    widgets.settle();
}

void PanelTest::await()
{
    constexpr std::chrono::seconds longest{60};
    auto const deadline = std::chrono::steady_clock::now() + longest;
    while (session.document.load() && std::chrono::steady_clock::now() < deadline) {
        static_cast<void>(session.update(std::chrono::steady_clock::now()));
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

void PanelTest::draw()
{
    session.passes.beginFrame();
    session.renderer.passTimeSink = [this](std::string_view pass, std::chrono::nanoseconds time) {
        session.passes.add(pass, time);
    };
    quarl::Rect<int> const all{0, 0, pictureSize.width, pictureSize.height};
    painter.draw(session, all, all);
    session.passes.endFrame(std::chrono::milliseconds(1));
    session.renderer.passTimeSink = nullptr;
    sgview::checkOpenGL("while drawing");
}

sgview::Picture PanelTest::picture()
{
    draw();
    return sgview::readFrame(session.renderer, {0, 0, pictureSize.width, pictureSize.height});
}

double shareThatDiffers(sgview::Picture const& a, sgview::Picture const& b)
{
    return sgview::measureDifference(a, b).share();
}
