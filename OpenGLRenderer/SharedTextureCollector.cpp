#include "OpenGLRenderer/SharedTextureCollector.h"

#include "SceneGraph/SGGeometryNode.h"

void SharedTextureCollector::enter(SGGeometryNode* node)
{
    for (SGTextureLayer const& layer : node->textureLayers)
        textures.insert(layer.texture);
}
