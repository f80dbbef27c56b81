#include "Viewer/Platform/SDLHandles.h"

#include "Viewer/Platform/HeadlessContext.h"

#include <SDL2/SDL.h>

namespace sgview {

VideoDriver::VideoDriver(char const* name)
{
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_VideoInit(name) != 0)
        throw ContextError(SDL_GetError());
}

VideoDriver::~VideoDriver()
{
    SDL_VideoQuit();
}

std::string videoDriverInUse()
{
    char const* const name = SDL_GetCurrentVideoDriver();
    return name ? name : "";
}

} // namespace sgview
