#include "OpenGLRenderer/VertexProgramData.h"

#include "SceneGraph/SGRendererManager.h"

VertexProgramData::~VertexProgramData()
{
    if (SGRendererManager::shutdown)
        return;
    for (GLuint const name : {defaultProgram, animationProgram})
        if (name != 0)
            glDeleteProgramsARB(1, &name);
}
