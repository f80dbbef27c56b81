#include "Viewer/OffscreenRenderer.h"

#include "Viewer/HostState.h"
#include "Viewer/OpenGLErrors.h"

namespace sgview {

Picture OffscreenRenderer::draw(smart_ptr<SGRootNode> const& root)
{
    setHostState();
    checkOpenGL("before drawing");
    module_.renderer().render(root);
    checkOpenGL("while drawing");

    Picture picture(context_.size());
    module_.renderer().readPixels(0, 0, picture.size.width, picture.size.height, SGRenderer::RGBA,
                                  picture.pixels.data());
    checkOpenGL("while reading the picture back");
    return picture;
}

} // namespace sgview
