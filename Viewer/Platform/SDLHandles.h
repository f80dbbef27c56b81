#pragma once

#include <SDL2/SDL_video.h>

#include <string>

namespace sgview {

/// SDL's video driver of a name, for as long as it is needed.
class VideoDriver {
public:
    /// \throws ContextError  there is none of the name, or it does not start
    explicit VideoDriver(char const* name);
    VideoDriver(VideoDriver const&) = delete;
    VideoDriver& operator=(VideoDriver const&) = delete;
    ~VideoDriver();
};

/// The name of the video driver that is there just now; empty where none is.
[[nodiscard]] std::string videoDriverInUse();

struct WindowEnd {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
};

struct ContextEnd {
    void operator()(void* context) const { SDL_GL_DeleteContext(context); }
};

} // namespace sgview
