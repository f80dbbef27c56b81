#include "OpenGLRenderer/VBOData.h"

#include "OpenGLRenderer/ExtraData.h"
#include "SceneGraph/SGRendererManager.h"

VBOData::~VBOData()
{
    if (!SGRendererManager::shutdown && name != 0)
        glDeleteBuffersARB(1, &name);
}

GLuint bufferOf(SGObject const& object, std::string const& key)
{
    auto const data = getExtraData<VBOData>(object, key);
    return data ? data->name : 0;
}
