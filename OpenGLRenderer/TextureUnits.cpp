#include "OpenGLRenderer/TextureUnits.h"

#include "OpenGLRenderer/Renderer.h"

#include <algorithm>

int drawnLayerCount(SGGeometryNode const& node)
{
    if (node.textureLayers.empty())
        return 0;
    return std::min(static_cast<int>(node.textureLayers.size()), GLRenderer::renderer->getMaxTextureUnits());
}

bool usesMultitexturing()
{
    return GLRenderer::renderer->getMaxTextureUnits() > 1;
}

GLenum textureUnitName(int unit)
{
    return GL_TEXTURE0_ARB + static_cast<GLenum>(unit);
}
