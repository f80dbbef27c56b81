#include "Viewer/Window/Controls.h"

#include "Viewer/Window/DisplaySwitches.h"

#include <SDL2/SDL_mouse.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace sgview {

namespace {

constexpr double keyOrbit = 37.5; // points: 15 degrees
constexpr double keyZoom = 1.25;
constexpr double wheelZoom = 1.15; // a notch

constexpr std::array<Color, 5> backgrounds{{
    WindowOptions::usualBackground,
    {1.0F, 1.0F, 1.0F, 1.0F},
    {0.5F, 0.5F, 0.5F, 1.0F},
    {0.16F, 0.18F, 0.20F, 1.0F},
    {0.0F, 0.0F, 0.0F, 1.0F},
}};

/// The one after a colour; the first after one that is none of them.
Color nextBackground(Color const& current)
{
    auto const found = std::ranges::find(backgrounds, current);
    bool const isLast = found == backgrounds.end() || found + 1 == backgrounds.end();
    return isLast ? backgrounds.front() : *(found + 1);
}

struct ViewKey {
    Action action;
    OrbitCamera::StandardView view;
};

constexpr std::array<ViewKey, 6> viewKeys{{
    {Action::viewFront, OrbitCamera::StandardView::front},
    {Action::viewBack, OrbitCamera::StandardView::back},
    {Action::viewLeft, OrbitCamera::StandardView::left},
    {Action::viewRight, OrbitCamera::StandardView::right},
    {Action::viewTop, OrbitCamera::StandardView::top},
    {Action::viewBottom, OrbitCamera::StandardView::bottom},
}};

} // namespace

Controls::Controls(Session& session, WindowDeeds deeds) : session_(session), deeds_(std::move(deeds)) {}

void Controls::perform(Action action)
{
    if (!performOnFiles(action) && !performOnView(action) && !performOnAnimation(action) &&
        !performOnDisplay(action))
        performOnWindow(action);
}

bool Controls::performOnFiles(Action action)
{
    switch (action) {
    case Action::nextFile:
        session_.openNeighbour(1);
        return true;
    case Action::previousFile:
        session_.openNeighbour(-1);
        return true;
    case Action::reload:
        session_.document.reload();
        return true;
    case Action::screenshot:
        deeds_.keepPicture(false);
        return true;
    case Action::screenshotWithPanel:
        deeds_.keepPicture(true);
        return true;
    default:
        return false;
    }
}

bool Controls::performOnView(Action action)
{
    OrbitCamera& camera = session_.camera;
    auto const* const standard = std::ranges::find(viewKeys, action, &ViewKey::action);
    if (standard != viewKeys.end()) {
        camera.look(standard->view, session_.points());
        return true;
    }
    switch (action) {
    case Action::orbitLeft:
        camera.orbit(keyOrbit, 0.0);
        return true;
    case Action::orbitRight:
        camera.orbit(-keyOrbit, 0.0);
        return true;
    case Action::orbitUp:
        camera.orbit(0.0, keyOrbit);
        return true;
    case Action::orbitDown:
        camera.orbit(0.0, -keyOrbit);
        return true;
    case Action::zoomIn:
        camera.zoom(keyZoom, 0.0, 0.0);
        return true;
    case Action::zoomOut:
        camera.zoom(1.0 / keyZoom, 0.0, 0.0);
        return true;
    case Action::fit:
        camera.fit(session_.points());
        return true;
    case Action::reset:
        camera.reset(session_.points());
        return true;
    case Action::orthographic:
        camera.toggleOrthographic();
        return true;
    case Action::upAxis:
        camera.cycleUp(session_.points());
        return true;
    default:
        return false;
    }
}

bool Controls::performOnAnimation(Action action)
{
    Playback& playback = session_.playback;
    switch (action) {
    case Action::playOrPause:
        playback.playOrPause(std::chrono::steady_clock::now());
        return true;
    case Action::stepForward:
    case Action::stepBack:
        session_.step(action == Action::stepForward ? 1 : -1);
        return true;
    case Action::faster:
        playback.setSpeed(playback.speed() * 2.0);
        return true;
    case Action::slower:
        playback.setSpeed(playback.speed() / 2.0);
        return true;
    case Action::loop:
        playback.setLooping(!playback.isLooping());
        return true;
    case Action::nextAnimation:
        session_.chooseNeighbour(1);
        return true;
    case Action::previousAnimation:
        session_.chooseNeighbour(-1);
        return true;
    default:
        return false;
    }
}

bool Controls::performOnDisplay(Action action)
{
    auto const* const found = std::ranges::find(displaySwitches, action, &DisplaySwitch::action);
    if (found != displaySwitches.end()) {
        bool& option = session_.display.*(found->option);
        option = !option;
        return true;
    }
    if (action != Action::background)
        return false;
    session_.display.background = nextBackground(session_.display.background);
    return true;
}

void Controls::performOnWindow(Action action)
{
    switch (action) {
    case Action::nextTechnique:
        session_.moveTechnique(1);
        break;
    case Action::previousTechnique:
        session_.moveTechnique(-1);
        break;
    case Action::splitView:
        session_.splits = !session_.splits;
        break;
    case Action::diagnostic:
        session_.showDiagnostic();
        break;
    case Action::panel:
        session_.togglePanel();
        break;
    case Action::help:
        session_.showsHelp = !session_.showsHelp;
        break;
    case Action::fullScreen:
        deeds_.toggleFullScreen();
        break;
    case Action::leave:
        leave();
        break;
    case Action::quit:
        deeds_.quit();
        break;
    default:
        break;
    }
}

void Controls::leave()
{
    if (session_.document.load())
        session_.document.cancel();
    else if (session_.measurement.isRunning())
        session_.measurement.cancel();
    else if (session_.showsHelp)
        session_.showsHelp = false;
    else if (session_.splits)
        session_.splits = false;
    else
        session_.notices.clear();
}

void Controls::press(SDL_KeyboardEvent const& event)
{
    if (std::optional<Action> const action = actionOf(event))
        perform(*action);
}

void Controls::press(SDL_MouseButtonEvent const& event)
{
    bool const shifted = (SDL_GetModState() & KMOD_SHIFT) != 0;
    if (event.button == SDL_BUTTON_LEFT && event.clicks == 2)
        perform(Action::fit);
    if (event.button == SDL_BUTTON_LEFT)
        drag_ = shifted ? Drag::pan : Drag::orbit;
    else if (event.button == SDL_BUTTON_RIGHT || event.button == SDL_BUTTON_MIDDLE)
        drag_ = Drag::pan;
    // A drag goes on where the pointer leaves the window.
    SDL_CaptureMouse(drag_ == Drag::nothing ? SDL_FALSE : SDL_TRUE);
}

void Controls::release(SDL_MouseButtonEvent const&)
{
    drag_ = Drag::nothing;
    SDL_CaptureMouse(SDL_FALSE);
}

void Controls::move(SDL_MouseMotionEvent const& event)
{
    double const x = event.xrel * pointsPerUnit_;
    double const y = event.yrel * pointsPerUnit_;
    if (drag_ == Drag::orbit)
        session_.camera.orbit(x, y);
    else if (drag_ == Drag::pan)
        session_.camera.pan(x, y);
}

void Controls::turn(SDL_MouseWheelEvent const& event)
{
    int x = 0;
    int y = 0;
    SDL_GetMouseState(&x, &y);
    double const notches =
        static_cast<double>(event.preciseY) * (event.direction == SDL_MOUSEWHEEL_FLIPPED ? -1.0 : 1.0);
    ViewLayout const& layout = session_.layout();
    session_.camera.zoom(std::pow(wheelZoom, notches), x * pointsPerUnit_ - layout.width / 2.0,
                         y * pointsPerUnit_ - layout.top() - layout.freeHeight() / 2.0);
}

void Controls::drop(SDL_DropEvent const& event)
{
    if (event.type == SDL_DROPBEGIN)
        dropped_.clear();
    else if (event.type == SDL_DROPFILE && event.file)
        dropped_.emplace_back(event.file);
    else if (event.type == SDL_DROPCOMPLETE && !dropped_.empty())
        session_.open(std::exchange(dropped_, {}));
}

} // namespace sgview
