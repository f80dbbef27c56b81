#pragma once

#include <SDL2/SDL_loadso.h>

namespace sgview {

/// Xlib, loaded as SDL does it: a program that shows windows elsewhere needs none. All its functions are null
/// where there is none.
class XLibrary {
public:
    XLibrary() : library_(SDL_LoadObject("libX11.so.6")) {}
    XLibrary(XLibrary const&) = delete;
    XLibrary& operator=(XLibrary const&) = delete;
    ~XLibrary()
    {
        if (library_)
            SDL_UnloadObject(library_);
    }

    /// \tparam Function  a pointer to a function of its type
    template <typename Function>
    [[nodiscard]] Function find(char const* name) const
    {
        return library_ ? reinterpret_cast<Function>(SDL_LoadFunction(library_, name)) : nullptr;
    }

private:
    void* library_;
};

} // namespace sgview
