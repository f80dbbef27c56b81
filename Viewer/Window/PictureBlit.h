#pragma once

#include "Maths/Rect.h"
#include "Utilities/Color.h"
#include "Viewer/Platform/Picture.h"

namespace sgview {

/// Puts pictures into the window as they are, pixel for pixel, in place of what is there. OpenGL's state is
/// put back when this goes.
class PictureBlit {
public:
    /// Clears the whole window.
    explicit PictureBlit(Color const& background);
    PictureBlit(PictureBlit const&) = delete;
    PictureBlit& operator=(PictureBlit const&) = delete;
    ~PictureBlit();

    /// Draws a picture, opaque.
    /// \param place  pixels, of the picture's size
    void draw(Picture const& picture, quarl::Rect<int> const& place) const;
};

} // namespace sgview
