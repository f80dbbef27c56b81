#include "Viewer/Window/PictureBlit.h"

#include "Viewer/Platform/HostState.h"

#include <epoxy/gl.h>

namespace sgview {

namespace {

void loadIdentity(GLenum mode)
{
    glMatrixMode(mode);
    glPushMatrix();
    glLoadIdentity();
}

void restore(GLenum mode)
{
    glMatrixMode(mode);
    glPopMatrix();
}

} // namespace

PictureBlit::PictureBlit(Color const& background)
{
    setHostState();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    loadIdentity(GL_PROJECTION);
    loadIdentity(GL_MODELVIEW);
    for (GLenum ability : {GL_TEXTURE_2D, GL_LIGHTING, GL_DEPTH_TEST, GL_BLEND, GL_ALPHA_TEST})
        glDisable(ability);
    glClearColor(background.r, background.g, background.b, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
}

PictureBlit::~PictureBlit()
{
    restore(GL_MODELVIEW);
    restore(GL_PROJECTION);
    glPopAttrib();
}

void PictureBlit::draw(Picture const& picture, quarl::Rect<int> const& place) const
{
    glViewport(place.x, place.y, place.width, place.height);
    // The upper left corner of the viewport; rows go down from there.
    glRasterPos2d(-1.0, 1.0);
    glPixelZoom(1.0F, -1.0F);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
    glDrawPixels(picture.size.width, picture.size.height, GL_RGBA, GL_UNSIGNED_BYTE, picture.pixels.data());
}

} // namespace sgview
