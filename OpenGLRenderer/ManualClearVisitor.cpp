#include "OpenGLRenderer/ManualClearVisitor.h"

#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGZTransformNode.h"

void ManualClearVisitor::enter(SGRootNode* node)
{
    if (!node->clearColor)
        return;
    auto const background = make_smart<SGZTransformNode>(nullptr);
    background->depthTest = false;
    background->depthWrite = false;

    auto const quad = make_smart<SGQuadNode>(background);
    quad->corners = {{-2.0, -2.0, 0.0}, {-2.0, 2.0, 0.0}, {2.0, 2.0, 0.0}, {2.0, -2.0, 0.0}};
    quad->material.setAmbientAndDiffuse(node->color);

    background->reparent(smart_ptr<SGNode>(node), true);
}

void ManualUnClearVisitor::enter(SGRootNode* node)
{
    if (node->clearColor && node->getFirstChild())
        node->getFirstChild()->deparent();
}
