#include "Viewer/Window/DemoWindow.h"

#include "Viewer/Platform/HostState.h"
#include "Viewer/Platform/OpenGLErrors.h"
#include "Viewer/Window/Keys.h"

#include <SDL2/SDL_events.h>

#include <utility>

namespace sgview {

namespace {

std::string titleWithKeys()
{
    return "demonstration scene - sgview (" + keyFor(Action::playOrPause) + ": play or pause, " +
           keyFor(Action::fullScreen) + ": full screen, " + keyFor(Action::quit) + ": quit)";
}

} // namespace

DemoWindow::DemoWindow(Model creature, PictureSize size, std::optional<std::filesystem::path> const& module,
                       TechniqueFinder const& findTechnique)
    : context_(size), module_(module), scene_(std::move(creature))
{
    // Nothing that is dropped on it would be opened.
    for (Uint32 const drop : {SDL_DROPFILE, SDL_DROPTEXT})
        SDL_EventState(drop, SDL_DISABLE);
    context_.setTitle(titleWithKeys());
    choose(module_.renderer(), findTechnique(module_.renderer()).technique);
    playback_.load(0, scene_.length());
    playback_.play(std::chrono::steady_clock::now());
}

void DemoWindow::run()
{
    while (isOpen_) {
        handleEvents();
        if (!isFrameDue())
            continue;
        context_.beginFrame();
        drawFrame();
    }
}

bool DemoWindow::isFrameDue() const
{
    return context_.isShown() && (playback_.isPlaying() || hasChanged_);
}

void DemoWindow::handleEvents()
{
    constexpr int forever = -1;
    SDL_WaitEventTimeout(nullptr,
                         isFrameDue() ? static_cast<int>(context_.untilNextFrame().count()) : forever);
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0)
        handle(event);
}

void DemoWindow::handle(SDL_Event const& event)
{
    if (event.type == SDL_QUIT)
        isOpen_ = false;
    else if (event.type == SDL_KEYDOWN)
        press(event.key);
    else if (event.type == SDL_WINDOWEVENT)
        hasChanged_ = true;
}

void DemoWindow::press(SDL_KeyboardEvent const& key)
{
    std::optional<Action> const action = actionOf(key);
    if (!action)
        return;
    switch (*action) {
    case Action::playOrPause:
        playback_.playOrPause(std::chrono::steady_clock::now());
        break;
    case Action::fullScreen:
        context_.toggleFullScreen();
        break;
    case Action::leave:
    case Action::quit:
        isOpen_ = false;
        break;
    default:
        break;
    }
}

void DemoWindow::drawFrame()
{
    playback_.advance(std::chrono::steady_clock::now());
    scene_.pose(playback_.position());
    PictureSize const pixels = context_.measures().pixels;
    scene_.setView(pixels.width, pixels.height);
    setHostState();
    module_.renderer().render(scene_.root());
    checkOpenGL("while drawing");
    context_.swap();
    hasChanged_ = false;
}

} // namespace sgview
