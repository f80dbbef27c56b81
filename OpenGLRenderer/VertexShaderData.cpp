#include "OpenGLRenderer/VertexShaderData.h"

#include "SceneGraph/SGRendererManager.h"

VertexShaderData::~VertexShaderData()
{
    if (SGRendererManager::shutdown)
        return;
    for (GLhandleARB const object : {shader, program})
        if (object != 0)
            glDeleteObjectARB(object);
}
