#include "Viewer/Window/WindowContext.h"

#include "SceneGraph/SGRendererManager.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Window/DesktopScale.h"
#include "Viewer/Window/XLibrary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace sgview {

namespace {

/// A video driver of SDL that shows windows, and the environment variable that says where.
struct Way {
    char const* driver;
    char const* display;
};

constexpr std::array<Way, 2> ways{{{"wayland", "WAYLAND_DISPLAY"}, {"x11", "DISPLAY"}}};

/// A driver that a person asks SDL for by name comes before all others.
constexpr char const* driverVariable = "SDL_VIDEODRIVER";

bool isSet(char const* variable)
{
    char const* const value = std::getenv(variable);
    return value && *value != '\0';
}

/// While this lives, an error that the X server reports does not end the process, as Xlib would have it: that
/// a context cannot be made is an answer.
class XErrorsOutlived {
public:
    XErrorsOutlived() : setHandler_(library_.find<SetHandler>("XSetErrorHandler"))
    {
        if (setHandler_)
            previous_ = setHandler_([](void*, void*) { return 0; });
    }
    XErrorsOutlived(XErrorsOutlived const&) = delete;
    XErrorsOutlived& operator=(XErrorsOutlived const&) = delete;
    ~XErrorsOutlived()
    {
        if (setHandler_)
            setHandler_(previous_);
    }

private:
    using Handler = int (*)(void* display, void* error);
    using SetHandler = Handler (*)(Handler);

    XLibrary library_;
    SetHandler setHandler_;
    Handler previous_ = nullptr;
};

/// The part of a size that a screen has room for beside what the desktop keeps for itself.
PictureSize fitted(PictureSize size, int screen)
{
    SDL_Rect room{};
    if (SDL_GetDisplayUsableBounds(screen, &room) != 0 || room.w <= 0 || room.h <= 0)
        return size;
    return {std::min(size.width, room.w), std::min(size.height, room.h)};
}

PictureSize scaled(PictureSize size, double factor)
{
    auto const times = [factor](int side) { return static_cast<int>(std::lround(side * factor)); };
    return {times(size.width), times(size.height)};
}

void askForFixedFunction(int samples)
{
    SDL_GL_ResetAttributes();
    for (SDL_GLattr component : {SDL_GL_RED_SIZE, SDL_GL_GREEN_SIZE, SDL_GL_BLUE_SIZE})
        SDL_GL_SetAttribute(component, 8);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, samples > 0 ? 1 : 0);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, samples);
}

} // namespace

WindowContext::WindowContext(PictureSize size, std::optional<double> scale) : scale_(scale)
{
    std::string reasons;
    auto const attempt = [&](char const* driver) {
        try {
            open(driver, size);
        } catch (ContextError const& error) {
            reasons +=
                (reasons.empty() ? "" : "; ") + std::string(driver ? driver : "SDL") + ": " + error.what();
        }
    };
    if (isSet(driverVariable))
        attempt(nullptr);
    else
        for (auto const& [driver, display] : ways)
            if (!context_ && isSet(display))
                attempt(driver);
    if (!context_)
        throw ContextError("no display to open a window on" +
                           (reasons.empty() ? std::string() : " (" + reasons + ")") +
                           "; 'sgview render' and 'sgview demo --output' draw into files without one");
    if (SDL_GL_SetSwapInterval(-1) != 0)
        SDL_GL_SetSwapInterval(1);
    SGRendererManager::shutdown = false;
}

WindowContext::~WindowContext()
{
    SGRendererManager::shutdown = true;
}

void WindowContext::open(char const* driver, PictureSize size)
{
    constexpr int smooth = 4;
    XErrorsOutlived const guard;
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    driver_ = std::make_unique<VideoDriver>(driver);
    isX_ = SDL_GetCurrentVideoDriver() == std::string_view("x11");
    desktopScale_ = isX_ ? desktopScaleOfX() : 1.0;
    if (openWith(smooth, size) || openWith(0, size))
        return;
    std::string const reason = SDL_GetError();
    driver_.reset();
    throw ContextError(reason);
}

bool WindowContext::openWith(int samples, PictureSize size)
{
    askForFixedFunction(samples);
    double const scale = isX_ ? scale_.value_or(desktopScale_) : 1.0;
    PictureSize const units = scale == 1.0 ? size : fitted(scaled(size, scale), 0);
    window_.reset(SDL_CreateWindow("sgview", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, units.width,
                                   units.height,
                                   SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI));
    if (window_)
        context_.reset(SDL_GL_CreateContext(window_.get()));
    if (!context_)
        window_.reset();
    return context_ != nullptr;
}

ScreenMeasures WindowContext::measures() const
{
    ScreenMeasures measures;
    SDL_GetWindowSize(window_.get(), &measures.units.width, &measures.units.height);
    SDL_GL_GetDrawableSize(window_.get(), &measures.pixels.width, &measures.pixels.height);
    for (int* const side :
         {&measures.units.width, &measures.units.height, &measures.pixels.width, &measures.pixels.height})
        *side = std::max(*side, 1);
    measures.pixelsPerPoint = scale_.value_or(desktopScale_ * measures.ratioOfScreen());
    return measures;
}

bool WindowContext::isShown() const
{
    return (SDL_GetWindowFlags(window_.get()) & (SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN)) == 0;
}

std::chrono::duration<double> WindowContext::refreshInterval() const
{
    constexpr int usual = 60;
    SDL_DisplayMode mode{};
    bool const known = SDL_GetWindowDisplayMode(window_.get(), &mode) == 0 && mode.refresh_rate > 0;
    return std::chrono::duration<double>(1.0 / (known ? mode.refresh_rate : usual));
}

void WindowContext::beginFrame()
{
    using Clock = std::chrono::steady_clock;
    nextFrame_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(refreshInterval());
}

std::chrono::milliseconds WindowContext::untilNextFrame() const
{
    using std::chrono::milliseconds;
    return std::max(std::chrono::ceil<milliseconds>(nextFrame_ - std::chrono::steady_clock::now()),
                    milliseconds(0));
}

void WindowContext::setTitle(std::string const& title)
{
    SDL_SetWindowTitle(window_.get(), title.c_str());
}

void WindowContext::toggleFullScreen()
{
    bool const isFull = (SDL_GetWindowFlags(window_.get()) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
    SDL_SetWindowFullscreen(window_.get(), isFull ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP);
}

void WindowContext::swap()
{
    SDL_GL_SwapWindow(window_.get());
}

} // namespace sgview
