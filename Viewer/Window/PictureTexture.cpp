#include "Viewer/Window/PictureTexture.h"

#include <epoxy/gl.h>

#include <cstdint>

namespace sgview {

PictureTexture::PictureTexture(Picture const& picture)
{
    constexpr int mipmapping = 14;
    bool const isMipmapped = epoxy_gl_version() >= mipmapping;
    glPushAttrib(GL_TEXTURE_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glGenTextures(1, &name_);
    glBindTexture(GL_TEXTURE_2D, name_);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, isMipmapped ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    if (isMipmapped)
        glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, picture.size.width, picture.size.height, 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, picture.pixels.data());
    glPopClientAttrib();
    glPopAttrib();
}

PictureTexture::~PictureTexture()
{
    glDeleteTextures(1, &name_);
}

ImTextureID PictureTexture::id() const
{
    return reinterpret_cast<ImTextureID>(std::uintptr_t{name_});
}

} // namespace sgview
