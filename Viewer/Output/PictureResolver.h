#pragma once

#include "Viewer/Platform/Picture.h"

namespace sgview {

/// Makes a part of a picture out of what was drawn `supersample` times as large. A pixel is the mean of those
/// drawn for it, as OpenGL stores them, by which blending goes too.
class PictureResolver {
public:
    /// Left upper corner of a part, pixels of the picture.
    struct Corner {
        int x = 0;
        int y = 0;
    };

    /// \param supersample  pixels drawn along each side of one of the picture, at least 1
    PictureResolver(Picture& picture, int supersample) : picture_(picture), supersample_(supersample) {}

    /// Full opacity, whatever the frame's alpha is: what a blending surface leaves there is no opacity of the
    /// picture. What lies beyond the picture's edges is left out.
    void addOpaque(Corner const& corner, Picture const& drawn);

    /// The opacity, and colours not multiplied by it. A pixel of colour c and opacity a looks c*a on black
    /// and c*a + 1-a on white: the difference of the two is 1-a.
    void addTransparent(Corner const& corner, Picture const& onBlack, Picture const& onWhite);

private:
    template <typename Resolve>
    void forEachPixel(Corner const& corner, PictureSize drawn, Resolve resolve);

    Picture& picture_;
    int supersample_;
};

} // namespace sgview
