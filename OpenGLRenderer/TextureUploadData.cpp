#include "OpenGLRenderer/TextureUploadData.h"

#include "SceneGraph/SGRendererManager.h"

TextureUploadData::TextureUploadData()
{
    glGenTextures(1, &name_);
}

TextureUploadData::~TextureUploadData()
{
    if (!SGRendererManager::shutdown)
        glDeleteTextures(1, &name_);
}
