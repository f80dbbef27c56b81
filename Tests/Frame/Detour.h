#pragma once

#include <SDL2/SDL_video.h>

/// Stands a function of ours in for an entry point of OpenGL. Every caller in the process, the renderer's
/// module included, finds the entry point through one variable of libepoxy's. Needs a current context.
template <typename Function>
class Detour {
public:
    /// \param name  the entry point's
    Detour(char const* name, Function& entryPoint, Function replacement)
        // The variable itself holds, before the first call, what would overwrite it with the real one.
        : entryPoint_(entryPoint), real_(reinterpret_cast<Function>(SDL_GL_GetProcAddress(name)))
    {
        entryPoint_ = replacement;
    }
    ~Detour() { entryPoint_ = real_; }
    Detour(Detour const&) = delete;
    Detour& operator=(Detour const&) = delete;

    [[nodiscard]] Function real() const { return real_; }

private:
    Function& entryPoint_;
    Function real_;
};
