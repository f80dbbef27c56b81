#include "OpenGLRenderer/VBOData.h"

#include "SceneGraph/SGRendererManager.h"

VBOData::~VBOData()
{
    if (!SGRendererManager::shutdown && name != 0)
        glDeleteBuffersARB(1, &name);
}
