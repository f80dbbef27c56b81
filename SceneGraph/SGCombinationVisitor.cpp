#include "SceneGraph/SGCombinationVisitor.h"

#include <utility>

SGCombinationVisitor::SGCombinationVisitor(std::vector<smart_ptr<SGNodeVisitor>> visitors)
    : visitors_(std::move(visitors))
{
}

template <typename Node>
void SGCombinationVisitor::enterEach(Node* node)
{
    for (smart_ptr<SGNodeVisitor> const& visitor : visitors_)
        visitor->enter(node);
}

template <typename Node>
void SGCombinationVisitor::leaveEach(Node* node)
{
    for (smart_ptr<SGNodeVisitor> const& visitor : visitors_)
        visitor->leave(node);
}

void SGCombinationVisitor::enter(SGNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGRootNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGRootNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGOrderedGroupNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGOrderedGroupNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGCameraNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGCameraNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGLightsNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGLightsNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGTransformNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGTransformNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGZTransformNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGZTransformNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGGeometryNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGGeometryNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGQuadNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGQuadNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGGeometryReferenceNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGGeometryReferenceNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGSurfaceGeometryReferenceNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGSurfaceGeometryReferenceNode* node)
{
    leaveEach(node);
}

void SGCombinationVisitor::enter(SGCurveGeometryReferenceNode* node)
{
    enterEach(node);
}

void SGCombinationVisitor::leave(SGCurveGeometryReferenceNode* node)
{
    leaveEach(node);
}
