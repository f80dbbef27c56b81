#pragma once

#include "SceneGraph/SGNodeVisitor.h"

/// Draws quads in immediate mode, and curves and surfaces from client arrays. Expects the arrays that
/// ConverterToFloats makes. Leaves all client arrays disabled and client texture unit 0 active.
class GeometryVisitor : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    /// Logs a quad that has not four corners, and does not draw it.
    void enter(SGQuadNode* node) override;
    void enter(SGCurveGeometryReferenceNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }
};
