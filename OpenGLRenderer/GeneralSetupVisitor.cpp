#include "OpenGLRenderer/GeneralSetupVisitor.h"

#include "OpenGLRenderer/GLVersion.h"
#include "OpenGLRenderer/Renderer.h"
#include "SceneGraph/SGRootNode.h"

namespace {

void clear(SGRootNode const& root)
{
    GLbitfield mask = 0;
    if (root.clearColor) {
        glClearColor(root.color.r, root.color.g, root.color.b, root.color.a);
        mask = GL_COLOR_BUFFER_BIT;
    }
    if (root.clearDepth) {
        glClearDepth(1.0);
        mask |= GL_DEPTH_BUFFER_BIT;
    }
    if (mask != 0)
        glClear(mask);
}

} // namespace

void GeneralSetupVisitor::enter(SGRootNode* node)
{
    glGetError(); // what the host left behind is not this pass's
    glShadeModel(GL_SMOOTH);
    clear(*node);

    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glDepthRange(0.0, 1.0);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glEnable(checkGLVersion(1, 2) ? GL_RESCALE_NORMAL : GL_NORMALIZE);

    glAlphaFunc(GL_GREATER, 0.0F);
    for (GLenum const capability : {GL_ALPHA_TEST, GL_BLEND, GL_POLYGON_OFFSET_FILL, GL_TEXTURE_2D})
        glDisable(capability);
    for (GLenum const array : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
        glDisableClientState(array);
}

void GeneralSetupVisitor::leave(SGRootNode*)
{
    GLRenderer::logError("GeneralSetupVisitor");
}
