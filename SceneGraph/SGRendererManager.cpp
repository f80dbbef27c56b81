#include "SceneGraph/SGRendererManager.h"

#include <utility>

bool SGRendererManager::shutdown = false;
smart_ptr<SGRenderer> SGRendererManager::renderer;

void SGRendererManager::setRenderer(smart_ptr<SGRenderer> newRenderer)
{
    renderer = std::move(newRenderer);
}

smart_ptr<SGRenderer> const& SGRendererManager::getRenderer()
{
    return renderer;
}
