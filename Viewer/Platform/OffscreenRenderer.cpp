#include "Viewer/Platform/OffscreenRenderer.h"

#include "Viewer/Platform/HostState.h"
#include "Viewer/Platform/OpenGLErrors.h"

#include <epoxy/gl.h>

namespace sgview {

std::string OffscreenRenderer::driver()
{
    auto const* const text = reinterpret_cast<char const*>(glGetString(GL_RENDERER));
    return text ? text : "unknown";
}

void OffscreenRenderer::drawFrame(smart_ptr<SGRootNode> const& root)
{
    setHostState();
    checkOpenGL("before drawing");
    module_.renderer().render(root);
    checkOpenGL("while drawing");
}

Picture OffscreenRenderer::draw(smart_ptr<SGRootNode> const& root)
{
    drawFrame(root);
    Picture picture(context_.size());
    module_.renderer().readPixels(0, 0, picture.size.width, picture.size.height, SGRenderer::RGBA,
                                  picture.pixels.data());
    checkOpenGL("while reading the picture back");
    return picture;
}

std::chrono::duration<double, std::milli> OffscreenRenderer::time(smart_ptr<SGRootNode> const& root)
{
    glFinish();
    auto const start = std::chrono::steady_clock::now();
    drawFrame(root);
    glFinish();
    return std::chrono::steady_clock::now() - start;
}

} // namespace sgview
