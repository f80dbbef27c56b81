#include "Viewer/Window/FrameReader.h"

#include "Viewer/Platform/HostState.h"

#include <epoxy/gl.h>

namespace sgview {

namespace {

/// A drawable of one sample a pixel, bound in place of the window's while it lives.
class PlainDrawable {
public:
    PlainDrawable(int width, int height)
    {
        glGenFramebuffers(1, &frame_);
        glGenRenderbuffers(1, &pixels_);
        glBindRenderbuffer(GL_RENDERBUFFER, pixels_);
        glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, width, height);
        glBindRenderbuffer(GL_RENDERBUFFER, 0);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, frame_);
        glFramebufferRenderbuffer(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, pixels_);
    }
    PlainDrawable(PlainDrawable const&) = delete;
    PlainDrawable& operator=(PlainDrawable const&) = delete;
    ~PlainDrawable()
    {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glDeleteFramebuffers(1, &frame_);
        glDeleteRenderbuffers(1, &pixels_);
    }

    void readFromNowOn() const { glBindFramebuffer(GL_READ_FRAMEBUFFER, frame_); }

private:
    GLuint frame_ = 0;
    GLuint pixels_ = 0;
};

void makeOpaque(Picture& picture)
{
    constexpr std::size_t alpha = 3;
    for (std::size_t i = alpha; i < picture.pixels.size(); i += 4)
        picture.pixels[i] = 255;
}

bool hasSeveralSamples()
{
    GLint samples = 0;
    glGetIntegerv(GL_SAMPLES, &samples);
    return samples > 1 && epoxy_has_gl_extension("GL_ARB_framebuffer_object");
}

void read(SGRenderer& renderer, quarl::Rect<int> const& area, Picture& picture)
{
    if (!hasSeveralSamples()) {
        renderer.readPixels(area.x, area.y, area.width, area.height, SGRenderer::RGBA, picture.pixels.data());
        return;
    }
    // Not every driver mixes the samples of a window's pixels when they are read.
    PlainDrawable const plain(area.width, area.height);
    glBlitFramebuffer(area.x, area.y, area.x + area.width, area.y + area.height, 0, 0, area.width,
                      area.height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    plain.readFromNowOn();
    renderer.readPixels(0, 0, area.width, area.height, SGRenderer::RGBA, picture.pixels.data());
}

} // namespace

Picture readFrame(SGRenderer& renderer, quarl::Rect<int> const& area)
{
    setHostState();
    Picture picture({area.width, area.height});
    read(renderer, area, picture);
    makeOpaque(picture);
    return picture;
}

} // namespace sgview
