#include "SceneGraph/SGCombinationVisitor.h"

#include <utility>

SGCombinationVisitor::SGCombinationVisitor(std::vector<smart_ptr<SGNodeVisitor>> visitors)
    : visitors_(std::move(visitors))
{
    for (smart_ptr<SGNodeVisitor> const& visitor : visitors_) {
        SGVisitorInterest const interest = visitor->interest();
        interest_ |= interest;
        for (std::size_t kind = 0; kind < nodeKindCount; ++kind) {
            if (interest.enters(static_cast<SGNodeKind>(kind)))
                entering_[kind].push_back(visitor.get());
            if (interest.leaves(static_cast<SGNodeKind>(kind)))
                leaving_[kind].push_back(visitor.get());
        }
    }
}

template <typename Node>
void SGCombinationVisitor::enterEach(SGNodeKind kind, Node* node)
{
    for (SGNodeVisitor* const visitor : entering_[static_cast<std::size_t>(kind)])
        visitor->enter(node);
}

template <typename Node>
void SGCombinationVisitor::leaveEach(SGNodeKind kind, Node* node)
{
    for (SGNodeVisitor* const visitor : leaving_[static_cast<std::size_t>(kind)])
        visitor->leave(node);
}

void SGCombinationVisitor::enter(SGNode* node)
{
    enterEach(SGNodeKind::other, node);
}

void SGCombinationVisitor::leave(SGNode* node)
{
    leaveEach(SGNodeKind::other, node);
}

void SGCombinationVisitor::enter(SGRootNode* node)
{
    enterEach(SGNodeKind::root, node);
}

void SGCombinationVisitor::leave(SGRootNode* node)
{
    leaveEach(SGNodeKind::root, node);
}

void SGCombinationVisitor::enter(SGOrderedGroupNode* node)
{
    enterEach(SGNodeKind::orderedGroup, node);
}

void SGCombinationVisitor::leave(SGOrderedGroupNode* node)
{
    leaveEach(SGNodeKind::orderedGroup, node);
}

void SGCombinationVisitor::enter(SGCameraNode* node)
{
    enterEach(SGNodeKind::camera, node);
}

void SGCombinationVisitor::leave(SGCameraNode* node)
{
    leaveEach(SGNodeKind::camera, node);
}

void SGCombinationVisitor::enter(SGLightsNode* node)
{
    enterEach(SGNodeKind::lights, node);
}

void SGCombinationVisitor::leave(SGLightsNode* node)
{
    leaveEach(SGNodeKind::lights, node);
}

void SGCombinationVisitor::enter(SGTransformNode* node)
{
    enterEach(SGNodeKind::transform, node);
}

void SGCombinationVisitor::leave(SGTransformNode* node)
{
    leaveEach(SGNodeKind::transform, node);
}

void SGCombinationVisitor::enter(SGZTransformNode* node)
{
    enterEach(SGNodeKind::zTransform, node);
}

void SGCombinationVisitor::leave(SGZTransformNode* node)
{
    leaveEach(SGNodeKind::zTransform, node);
}

void SGCombinationVisitor::enter(SGGeometryNode* node)
{
    enterEach(SGNodeKind::geometry, node);
}

void SGCombinationVisitor::leave(SGGeometryNode* node)
{
    leaveEach(SGNodeKind::geometry, node);
}

void SGCombinationVisitor::enter(SGQuadNode* node)
{
    enterEach(SGNodeKind::quad, node);
}

void SGCombinationVisitor::leave(SGQuadNode* node)
{
    leaveEach(SGNodeKind::quad, node);
}

void SGCombinationVisitor::enter(SGGeometryReferenceNode* node)
{
    enterEach(SGNodeKind::geometryReference, node);
}

void SGCombinationVisitor::leave(SGGeometryReferenceNode* node)
{
    leaveEach(SGNodeKind::geometryReference, node);
}

void SGCombinationVisitor::enter(SGSurfaceGeometryReferenceNode* node)
{
    enterEach(SGNodeKind::surface, node);
}

void SGCombinationVisitor::leave(SGSurfaceGeometryReferenceNode* node)
{
    leaveEach(SGNodeKind::surface, node);
}

void SGCombinationVisitor::enter(SGCurveGeometryReferenceNode* node)
{
    enterEach(SGNodeKind::curve, node);
}

void SGCombinationVisitor::leave(SGCurveGeometryReferenceNode* node)
{
    leaveEach(SGNodeKind::curve, node);
}
