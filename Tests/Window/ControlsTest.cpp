#include "Viewer/Window/Controls.h"

#include "Tests/Window/PanelTesting.h"

#include <cmath>

namespace {

class ControlsTest : public PanelTest {
protected:
    /// Where the camera is after the pointer has dragged the model so many of the desktop's units.
    double azimuthAfterDrag(int units, double pointsPerUnit)
    {
        sgview::Controls controls(session, {});
        controls.setPointsPerUnit(pointsPerUnit);
        controls.perform(sgview::Action::reset);
        SDL_MouseButtonEvent press{};
        press.button = SDL_BUTTON_LEFT;
        press.clicks = 1;
        controls.press(press);
        SDL_MouseMotionEvent movement{};
        movement.xrel = units;
        controls.move(movement);
        controls.release(press);
        controls.move(movement);
        return session.camera.azimuth();
    }
};

TEST_F(ControlsTest, ADragTurnsAsFarOnAnyScreen)
{
    open(CREATURE);
    double const still = azimuthAfterDrag(0, 1.0);
    double const usual = azimuthAfterDrag(100, 1.0);
    EXPECT_GT(std::abs(usual - still), 10.0);
    EXPECT_DOUBLE_EQ(azimuthAfterDrag(125, 0.8), usual);
    EXPECT_DOUBLE_EQ(azimuthAfterDrag(50, 2.0), usual);
}

} // namespace
