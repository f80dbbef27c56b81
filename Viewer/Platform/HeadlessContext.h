#pragma once

#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/SDLHandles.h"

#include <SDL2/SDL.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace sgview {

/// No OpenGL context that is fit for drawing. what() is one line and says what was tried.
class ContextError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// An OpenGL context without a window on a screen: fixed-function, 8 bits a colour, 24 bits of depth. Current
/// while it lives; one at a time.
class HeadlessContext {
public:
    /// \param size  of what is drawn into, pixels
    /// \throws ContextError
    explicit HeadlessContext(PictureSize size);

    /// By one of SDL's video drivers; if that has a display, in a window that nobody sees.
    /// \throws ContextError  also where what is drawn cannot be read back: such a window need not have pixels
    HeadlessContext(PictureSize size, std::string const& driver);
    HeadlessContext(HeadlessContext const&) = delete;
    HeadlessContext& operator=(HeadlessContext const&) = delete;

    /// What still holds OpenGL names then drops them without a call.
    ~HeadlessContext();

    [[nodiscard]] PictureSize size() const { return size_; }

private:
    void open(char const* driver);
    void checkDrawable() const;

    PictureSize size_;
    std::unique_ptr<VideoDriver> driver_;
    std::unique_ptr<SDL_Window, WindowEnd> window_;
    std::unique_ptr<void, ContextEnd> context_;
};

} // namespace sgview
