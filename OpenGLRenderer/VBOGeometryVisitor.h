#pragma once

#include "OpenGLRenderer/GeometryVisitor.h"

/// Draws surfaces from the buffer objects that VBOCreator makes, and all else as GeometryVisitor does, a
/// surface that lacks any of its buffers included.
///
/// After a surface no buffer is bound, all client arrays are disabled and client texture unit 0 is active.
class VBOGeometryVisitor : public GeometryVisitor {
public:
    using GeometryVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }
};
