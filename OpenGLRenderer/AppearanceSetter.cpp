#include "OpenGLRenderer/AppearanceSetter.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/TextureUnits.h"
#include "OpenGLRenderer/TextureUploadData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

namespace {

void setBothFaces(GLenum property, Color const& color)
{
    glMaterialfv(GL_FRONT, property, color.data());
    glMaterialfv(GL_BACK, property, color.data());
}

void setMaterial(Material const& material)
{
    glColor4fv(material.ambient.data());
    if (material.ambdiff) {
        setBothFaces(GL_AMBIENT_AND_DIFFUSE, material.ambient);
    } else {
        for (GLenum const face : {GL_FRONT, GL_BACK}) {
            glMaterialfv(face, GL_AMBIENT, material.ambient.data());
            glMaterialfv(face, GL_DIFFUSE, material.diffuse.data());
        }
    }
    setBothFaces(GL_SPECULAR, material.specular);
    setBothFaces(GL_EMISSION, material.emissive);
    glMaterialf(GL_FRONT, GL_SHININESS, material.shininess);
    glMaterialf(GL_BACK, GL_SHININESS, material.shininess);
}

void setEnvironment(SGTextureLayer const& layer, int unit)
{
    if (!layer.blendWithColor) {
        constexpr GLfloat none[4] = {0.0F, 0.0F, 0.0F, 0.0F};
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, none);
        return;
    }
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_BLEND);
    glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, layer.color.data());
    if (unit != 0) { // unit 0 gets the colour too
        glActiveTextureARB(GL_TEXTURE0_ARB);
        glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, layer.color.data());
        glActiveTextureARB(textureUnitName(unit));
    }
}

void setSampling(bool clamp)
{
    constexpr GLfloat border[4] = {1.0F, 1.0F, 1.0F, 0.0F};
    GLint const wrap = clamp ? GL_CLAMP : GL_REPEAT;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR); // though the texture carries mipmaps
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
    glTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_BORDER_COLOR, border);
}

void setTexture(SGTextureLayer const& layer, int unit)
{
    auto const* const texture = findExtraData<TextureUploadData>(*layer.texture, ExtraDataKeys::texture);
    if (!texture)
        return;
    if (usesMultitexturing())
        glActiveTextureARB(textureUnitName(unit));
    glBindTexture(GL_TEXTURE_2D, texture->name());
    glEnable(GL_TEXTURE_2D);
    setEnvironment(layer, unit);
    setSampling(layer.clamp);
}

} // namespace

void AppearanceSetter::enter(SGGeometryNode* node)
{
    setMaterial(node->material);
    if (node->blending)
        glEnable(GL_BLEND);
    int const layers = drawnLayerCount(*node);
    for (int unit = 0; unit < layers; ++unit)
        setTexture(node->textureLayers[static_cast<std::size_t>(unit)], unit);
}

void AppearanceSetter::leave(SGGeometryNode* node)
{
    if (node->blending)
        glDisable(GL_BLEND);
    for (int unit = drawnLayerCount(*node) - 1; unit >= 0; --unit) {
        if (usesMultitexturing())
            glActiveTextureARB(textureUnitName(unit));
        glDisable(GL_TEXTURE_2D);
    }
}

void AppearanceSetter::enter(SGCurveGeometryReferenceNode* node)
{
    glLineWidth(static_cast<GLfloat>(node->lineWidth));
    glColor4fv(node->material.ambient.data());
    if (node->blending)
        glEnable(GL_BLEND);
    if (node->lineStipple != 0) {
        glEnable(GL_LINE_STIPPLE);
        glLineStipple(1, node->lineStipple);
    }
}

void AppearanceSetter::leave(SGCurveGeometryReferenceNode* node)
{
    if (node->blending)
        glDisable(GL_BLEND);
    if (node->lineStipple != 0)
        glDisable(GL_LINE_STIPPLE);
}

void AppearanceSetter::enter(SGSurfaceGeometryReferenceNode* node)
{
    enter(static_cast<SGGeometryNode*>(node));
    if (node->wireframe) {
        glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
        glLineWidth(static_cast<GLfloat>(node->lineWidth));
        glColor4fv(node->material.ambient.data());
    }
}

void AppearanceSetter::leave(SGSurfaceGeometryReferenceNode* node)
{
    leave(static_cast<SGGeometryNode*>(node));
    if (node->wireframe)
        glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}
