#pragma once

#include "SceneGraph/SGNodeVisitor.h"

/// Sets material, blending, textures and line style for what is about to be drawn, and takes blending,
/// textures and line style down after it.
///
/// A layer whose image has no texture is skipped. Surfaces go through enter(SGGeometryNode*) and
/// leave(SGGeometryNode*), so a derived pass that overrides these changes surfaces too.
class AppearanceSetter : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGGeometryNode* node) override;
    void leave(SGGeometryNode* node) override;
    void enter(SGCurveGeometryReferenceNode* node) override;
    void leave(SGCurveGeometryReferenceNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    void leave(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }
};
