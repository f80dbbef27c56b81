#include "SceneGraph/SGNodeVisitor.h"

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGGeometryNode.h"
#include "SceneGraph/SGGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGOrderedGroupNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGZTransformNode.h"

void SGNodeVisitor::enter(SGNode*) {}

void SGNodeVisitor::leave(SGNode*) {}

void SGNodeVisitor::enter(SGRootNode* node)
{
    enter(static_cast<SGNode*>(node));
}

void SGNodeVisitor::leave(SGRootNode* node)
{
    leave(static_cast<SGNode*>(node));
}

void SGNodeVisitor::enter(SGOrderedGroupNode* node)
{
    enter(static_cast<SGNode*>(node));
}

void SGNodeVisitor::leave(SGOrderedGroupNode* node)
{
    leave(static_cast<SGNode*>(node));
}

void SGNodeVisitor::enter(SGCameraNode* node)
{
    enter(static_cast<SGNode*>(node));
}

void SGNodeVisitor::leave(SGCameraNode* node)
{
    leave(static_cast<SGNode*>(node));
}

void SGNodeVisitor::enter(SGLightsNode* node)
{
    enter(static_cast<SGNode*>(node));
}

void SGNodeVisitor::leave(SGLightsNode* node)
{
    leave(static_cast<SGNode*>(node));
}

void SGNodeVisitor::enter(SGTransformNode* node)
{
    enter(static_cast<SGNode*>(node));
}

void SGNodeVisitor::leave(SGTransformNode* node)
{
    leave(static_cast<SGNode*>(node));
}

void SGNodeVisitor::enter(SGZTransformNode* node)
{
    enter(static_cast<SGNode*>(node));
}

void SGNodeVisitor::leave(SGZTransformNode* node)
{
    leave(static_cast<SGNode*>(node));
}

void SGNodeVisitor::enter(SGGeometryNode* node)
{
    enter(static_cast<SGNode*>(node));
}

void SGNodeVisitor::leave(SGGeometryNode* node)
{
    leave(static_cast<SGNode*>(node));
}

void SGNodeVisitor::enter(SGQuadNode* node)
{
    enter(static_cast<SGGeometryNode*>(node));
}

void SGNodeVisitor::leave(SGQuadNode* node)
{
    leave(static_cast<SGGeometryNode*>(node));
}

void SGNodeVisitor::enter(SGGeometryReferenceNode* node)
{
    enter(static_cast<SGGeometryNode*>(node));
}

void SGNodeVisitor::leave(SGGeometryReferenceNode* node)
{
    leave(static_cast<SGGeometryNode*>(node));
}

void SGNodeVisitor::enter(SGSurfaceGeometryReferenceNode* node)
{
    enter(static_cast<SGGeometryReferenceNode*>(node));
}

void SGNodeVisitor::leave(SGSurfaceGeometryReferenceNode* node)
{
    leave(static_cast<SGGeometryReferenceNode*>(node));
}

void SGNodeVisitor::enter(SGCurveGeometryReferenceNode* node)
{
    enter(static_cast<SGGeometryReferenceNode*>(node));
}

void SGNodeVisitor::leave(SGCurveGeometryReferenceNode* node)
{
    leave(static_cast<SGGeometryReferenceNode*>(node));
}
