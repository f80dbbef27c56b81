#pragma once

#include "Viewer/Platform/Picture.h"

#include <imgui.h>

namespace sgview {

/// A picture that widgets can show, opaque, its upper left corner at 0, 0. Its sides are powers of two. Needs
/// OpenGL's context current; leaves OpenGL's state as it was.
class PictureTexture {
public:
    explicit PictureTexture(Picture const& picture);
    PictureTexture(PictureTexture const&) = delete;
    PictureTexture& operator=(PictureTexture const&) = delete;
    ~PictureTexture();

    [[nodiscard]] ImTextureID id() const;

private:
    unsigned name_ = 0;
};

} // namespace sgview
