#include "OpenGLRenderer/CameraLightsTransformVisitor.h"

#include "Maths/UVector3.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGZTransformNode.h"

#include <epoxy/gl.h>

namespace {

void load(GLenum mode, Matrix const& matrix)
{
    glMatrixMode(mode);
    GLdouble columns[16];
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            columns[4 * column + row] = matrix(row, column);
    glLoadMatrixd(columns);
}

void setEnabled(GLenum capability, bool on)
{
    if (on)
        glEnable(capability);
    else
        glDisable(capability);
}

GLenum lightName(std::size_t index)
{
    return GL_LIGHT0 + static_cast<GLenum>(index);
}

void setLight(GLenum name, SGLightData const& light)
{
    UVector3 const direction(light.direction);
    GLfloat const position[4] = {static_cast<GLfloat>(direction.x), static_cast<GLfloat>(direction.y),
                                 static_cast<GLfloat>(direction.z), 0.0F};
    glLightfv(name, GL_POSITION, position);
    glLightfv(name, GL_AMBIENT, light.ambient.data());
    glLightfv(name, GL_DIFFUSE, light.diffuse.data());
    glLightfv(name, GL_SPECULAR, light.specular.data());
    glEnable(name);
}

void setLightModel()
{
    constexpr GLfloat black[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 0);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, black);
}

// OpenGL transforms a light by the model-view matrix of the moment: under the identity it stays in eye space.
void setLights(std::vector<SGLightData> const& lights)
{
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    for (std::size_t i = 0; i < lights.size(); ++i)
        setLight(lightName(i), lights[i]);
    glPopMatrix();
}

Matrix depthRemap(double lower, double upper)
{
    Matrix remap;
    remap(2, 2) = upper - lower;
    remap(2, 3) = lower;
    return remap;
}

} // namespace

void CameraLightsTransformVisitor::setStackMatrices()
{
    if (projectionDirty) {
        load(GL_PROJECTION, projectionStack.back());
        projectionDirty = false;
    }
    if (modelViewDirty) {
        load(GL_MODELVIEW, modelViewStack.back());
        modelViewDirty = false;
    }
}

void CameraLightsTransformVisitor::setStackZState() const
{
    ZState const& state = zStateStack.back();
    setEnabled(GL_DEPTH_TEST, state.depthTest);
    glDepthMask(state.depthWrite ? GL_TRUE : GL_FALSE);
}

void CameraLightsTransformVisitor::setStackViewport() const
{
    quarl::Rect<int> const& viewport = viewportStack.back();
    glViewport(viewport.x, viewport.y, viewport.width, viewport.height);
}

void CameraLightsTransformVisitor::popLighting()
{
    lightingStack.pop_back();
    setEnabled(GL_LIGHTING, lightingStack.back());
}

void CameraLightsTransformVisitor::attachViewMatrix(SGSurfaceGeometryReferenceNode& node)
{
    if (viewMatrix && viewMatrix->referenceCount() == 1)
        viewMatrix->matrix = modelViewStack.back();
    else
        viewMatrix = make_smart<ViewMatrixData>(modelViewStack.back());
    node.setExtraData(ExtraDataKeys::viewMatrix, viewMatrix);
}

void CameraLightsTransformVisitor::enter(SGRootNode*)
{
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    // A frame that ended in an exception has left its own.
    projectionStack.assign(1, Matrix());
    modelViewStack.assign(1, Matrix());
    viewportStack.clear();
    projectionDirty = true;
    modelViewDirty = true;
    setStackMatrices();
    glDisable(GL_LIGHTING);
    lightingStack.assign(1, false);
    zStateStack.assign(1, {true, true});
    projectionDirty = true;
    modelViewDirty = true;
}

void CameraLightsTransformVisitor::leave(SGRootNode*)
{
    projectionStack.pop_back();
    modelViewStack.pop_back();
    lightingStack.pop_back();
    zStateStack.pop_back();
}

void CameraLightsTransformVisitor::enter(SGCameraNode* node)
{
    CameraBase const& camera = *node->camera;
    modelViewStack.push_back(camera.view);
    projectionStack.push_back(camera.projection);
    viewportStack.push_back(camera.viewport);
    setStackViewport();
    projectionDirty = true;
    modelViewDirty = true;
}

void CameraLightsTransformVisitor::leave(SGCameraNode*)
{
    projectionStack.pop_back();
    modelViewStack.pop_back();
    viewportStack.pop_back();
    if (!viewportStack.empty())
        setStackViewport();
    projectionDirty = true;
    modelViewDirty = true;
}

void CameraLightsTransformVisitor::enter(SGTransformNode* node)
{
    modelViewStack.push_back(modelViewStack.back() * node->transform);
    modelViewDirty = true;
}

void CameraLightsTransformVisitor::leave(SGTransformNode*)
{
    modelViewStack.pop_back();
    modelViewDirty = true;
}

void CameraLightsTransformVisitor::enter(SGZTransformNode* node)
{
    if (node->clearDepth)
        glClear(GL_DEPTH_BUFFER_BIT);
    zStateStack.push_back({node->depthTest, node->depthWrite});
    setStackZState();
    projectionStack.push_back(depthRemap(node->lower, node->upper) * projectionStack.back());
    projectionDirty = true;
}

void CameraLightsTransformVisitor::leave(SGZTransformNode*)
{
    projectionStack.pop_back();
    projectionDirty = true;
    zStateStack.pop_back();
    setStackZState();
}

void CameraLightsTransformVisitor::enter(SGLightsNode* node)
{
    if (node->lights.empty()) {
        glDisable(GL_LIGHTING);
        lightingStack.push_back(false);
        return;
    }
    lightingStack.push_back(true);
    glEnable(GL_LIGHTING);
    setLightModel();
    setLights(node->lights);
}

void CameraLightsTransformVisitor::leave(SGLightsNode* node)
{
    for (std::size_t i = 0; i < node->lights.size(); ++i)
        glDisable(lightName(i));
    popLighting();
}

void CameraLightsTransformVisitor::enter(SGGeometryNode*)
{
    setStackMatrices();
}

void CameraLightsTransformVisitor::enter(SGSurfaceGeometryReferenceNode* node)
{
    enter(static_cast<SGGeometryNode*>(node)); // where the default ends, in one step
    if (node->getBoneWeights() && node->getBoneTransforms())
        attachViewMatrix(*node);
    if (node->unlit) {
        lightingStack.push_back(false);
        glDisable(GL_LIGHTING);
    }
}

void CameraLightsTransformVisitor::leave(SGSurfaceGeometryReferenceNode* node)
{
    if (node->mayHaveExtraData())
        node->setExtraData(ExtraDataKeys::viewMatrix, nullptr);
    if (node->unlit)
        popLighting();
}

void CameraLightsTransformVisitor::enter(SGCurveGeometryReferenceNode* node)
{
    SGNodeVisitor::enter(node);
    lightingStack.push_back(false);
    glDisable(GL_LIGHTING);
}

void CameraLightsTransformVisitor::leave(SGCurveGeometryReferenceNode*)
{
    popLighting();
}
