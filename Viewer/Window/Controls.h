#pragma once

#include "Viewer/Window/Keys.h"
#include "Viewer/Window/Session.h"

#include <SDL2/SDL_events.h>

#include <functional>
#include <vector>

namespace sgview {

/// What only the window itself can do, as the controls ask for it.
struct WindowDeeds {
    std::function<void()> quit;
    std::function<void()> toggleFullScreen;
    std::function<void(bool withPanel)> keepPicture;
};

/// Turns keys, pointer and dropped files into changes of a session.
class Controls {
public:
    Controls(Session& session, WindowDeeds deeds);

    /// Of what the pointer counts in.
    void setPointsPerUnit(double pointsPerUnit) { pointsPerUnit_ = pointsPerUnit; }

    void perform(Action action);

    void press(SDL_KeyboardEvent const& event);
    void press(SDL_MouseButtonEvent const& event);
    void release(SDL_MouseButtonEvent const& event);
    void move(SDL_MouseMotionEvent const& event);
    void turn(SDL_MouseWheelEvent const& event);

    /// Files come one by one between a beginning and an end.
    void drop(SDL_DropEvent const& event);

private:
    enum class Drag { nothing, orbit, pan };

    bool performOnFiles(Action action);
    bool performOnView(Action action);
    bool performOnAnimation(Action action);
    bool performOnDisplay(Action action);
    void performOnWindow(Action action);
    void leave();

    Session& session_;
    WindowDeeds deeds_;
    double pointsPerUnit_ = 1.0;
    Drag drag_ = Drag::nothing;
    std::vector<std::filesystem::path> dropped_;
};

} // namespace sgview
