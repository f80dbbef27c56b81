#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/MissingEntryPoints.h"
#include "OpenGLRenderer/Renderer.h"
#include "SceneGraph/SGObject.h"
#include "SceneGraph/SGRendererInterface.h"
#include "SceneGraph/SGRendererManager.h"

SG_RENDERER_MODULE;

namespace {

/// Registers the renderer while the module is loaded. When the module goes, takes back all that could still
/// run its code, but for GLRenderer::renderer, which goes by itself. The context must be current then, or
/// SGRendererManager::shutdown set.
class Registration {
public:
    Registration()
    {
        GLRenderer::renderer.reset();
        smart_ptr<SGRenderer> const renderer(new GLRenderer);
        SGRendererManager::setRenderer(renderer);
        registered_ = renderer.get();
    }
    Registration(Registration const&) = delete;
    Registration& operator=(Registration const&) = delete;
    ~Registration()
    {
        if (SGRendererManager::getRenderer().get() == registered_)
            SGRendererManager::setRenderer(nullptr);
        SGObject::removeExtraDataEverywhere(ExtraDataKeys::prefix);
    }

private:
    // Not GLRenderer::renderer: that may have gone before this.
    SGRenderer const* registered_;
};

MissingEntryPoints const missingEntryPoints;
Registration const registration;

} // namespace
