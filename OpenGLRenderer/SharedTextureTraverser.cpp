#include "OpenGLRenderer/SharedTextureTraverser.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/Renderer.h"
#include "OpenGLRenderer/SharedTextureCollector.h"
#include "OpenGLRenderer/TextureUploadData.h"
#include "SceneGraph/SGGeometryNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTraverser.h"

#include <GL/glu.h>

namespace {

smart_ptr<TextureUploadData> upload(Image_base const& image)
{
    auto texture = make_smart<TextureUploadData>();
    glBindTexture(GL_TEXTURE_2D, texture->name());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    GLenum const format = image.getFormat() == Image_base::RGBA ? GL_RGBA : GL_RGB;
    gluBuild2DMipmaps(GL_TEXTURE_2D, image.getNumComponents(), image.getWidth(), image.getHeight(), format,
                      GL_UNSIGNED_BYTE, image.getData());
    GLRenderer::logError("Failed to upload texture:");
    return texture;
}

bool hasTexture(SharedImage const& shared)
{
    return findExtraData<TextureUploadData>(shared, ExtraDataKeys::texture) != nullptr;
}

void uploadMissing(std::unordered_set<smart_ptr<SharedImage>> const& images)
{
    for (smart_ptr<SharedImage> const& shared : images)
        if (!hasTexture(*shared))
            shared->setExtraData(ExtraDataKeys::texture, upload(*shared->get()));
}

} // namespace

void SharedTextureTraverser::enter(SGRootNode* node)
{
    SharedTextureCollector collector;
    SGTraverser::walk(*node, collector);
    uploadMissing(collector.textures);
}

void SharedTextureTraverser::carryOut(SGRootNode&, Findings findings)
{
    std::unordered_set<smart_ptr<SharedImage>> missing;
    for (SceneSurvey::Finding const& finding : findings)
        for (SGTextureLayer const& layer : finding.node->textureLayers)
            if (!hasTexture(*layer.texture))
                missing.insert(layer.texture);
    uploadMissing(missing);
}
