#include "Viewer/Platform/HeadlessContext.h"

#include "SceneGraph/SGRendererManager.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace sgview {

namespace {

/// A video driver of SDL that offers OpenGL, and the environment variable without which it has no display.
struct Way {
    char const* driver;
    char const* display;
};

// The first needs no display at all; the others serve where a display's driver alone offers OpenGL.
constexpr std::array<Way, 3> ways{
    {{"offscreen", nullptr}, {"x11", "DISPLAY"}, {"wayland", "XDG_RUNTIME_DIR"}}};

std::string inWords(int width, int height)
{
    return std::to_string(width) + " x " + std::to_string(height);
}

[[noreturn]] void fail()
{
    throw ContextError(SDL_GetError());
}

void askForFixedFunction()
{
    SDL_GL_ResetAttributes();
    for (SDL_GLattr component : {SDL_GL_RED_SIZE, SDL_GL_GREEN_SIZE, SDL_GL_BLUE_SIZE, SDL_GL_ALPHA_SIZE})
        SDL_GL_SetAttribute(component, 8);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
}

/// Whether a grey that everything is filled with is what is read back everywhere.
bool comesBack(PictureSize size, std::uint8_t grey)
{
    float const component = static_cast<float>(grey) / 255.0F;
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    glClearColor(component, component, component, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    glPopAttrib();
    Picture picture(size);
    std::ranges::fill(picture.pixels, static_cast<std::uint8_t>(~grey));
    glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_BYTE, picture.pixels.data());
    constexpr std::size_t components = 4;
    constexpr std::size_t alpha = 3; // of which there need not be any
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        if (i % components != alpha && picture.pixels[i] != grey)
            return false;
    return true;
}

} // namespace

HeadlessContext::HeadlessContext(PictureSize size) : size_(size)
{
    std::string reasons;
    bool const isDeviceNumbered =
        SDL_GetHint("SDL_HINT_EGL_DEVICE") != nullptr; // only the first way knows it
    for (auto const& [driver, display] : ways) {
        if (display && (!std::getenv(display) || isDeviceNumbered))
            continue;
        try {
            open(driver);
            break;
        } catch (ContextError const& error) {
            reasons += std::string(reasons.empty() ? "" : "; ") + driver + ": " + error.what();
        }
    }
    if (!context_)
        throw ContextError("no OpenGL context without a screen; tried " + reasons);
    checkDrawable();
    SGRendererManager::shutdown = false;
}

HeadlessContext::HeadlessContext(PictureSize size, std::string const& driver) : size_(size)
{
    open(driver.c_str());
    checkDrawable();
    if (!comesBack(size, 0) || !comesBack(size, 255))
        throw ContextError("what is drawn cannot be read back");
    SGRendererManager::shutdown = false;
}

HeadlessContext::~HeadlessContext()
{
    SGRendererManager::shutdown = true;
}

void HeadlessContext::open(char const* driver)
{
    auto video = std::make_unique<VideoDriver>(driver);
    askForFixedFunction();
    std::unique_ptr<SDL_Window, WindowEnd> window(
        SDL_CreateWindow("sgview", 0, 0, size_.width, size_.height, SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN));
    if (!window)
        fail();
    context_.reset(SDL_GL_CreateContext(window.get()));
    if (!context_)
        fail();
    window_ = std::move(window);
    driver_ = std::move(video);
}

void HeadlessContext::checkDrawable() const
{
    std::array<GLint, 2> largest{};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, largest.data());
    if (size_.width > largest[0] || size_.height > largest[1])
        throw ContextError("a picture of " + inWords(size_.width, size_.height) +
                           " pixels is larger than this OpenGL draws: " + inWords(largest[0], largest[1]) +
                           " at most");
    // A fresh context's viewport is the whole of what it draws into.
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    if (viewport[2] != size_.width || viewport[3] != size_.height)
        throw ContextError("a picture of " + inWords(size_.width, size_.height) +
                           " pixels was asked for, the system offers " + inWords(viewport[2], viewport[3]));
}

} // namespace sgview
