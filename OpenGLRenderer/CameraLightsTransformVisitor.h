#pragma once

#include "Maths/Matrix.h"
#include "Maths/Rect.h"
#include "OpenGLRenderer/ViewMatrixData.h"
#include "SceneGraph/SGNodeVisitor.h"

#include <vector>

/// Keeps OpenGL's projection, model-view, viewport, lighting and depth state as the path from the root to the
/// current node asks for. Goes first in the walk that draws.
///
/// Matrices are loaded only before something is drawn, and only when they have changed. A skinned surface
/// carries a ViewMatrixData while the walk is inside it.
class CameraLightsTransformVisitor : public SGNodeVisitor {
public:
    struct ZState {
        bool depthTest;
        bool depthWrite;
    };

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGRootNode* node) override;
    void leave(SGRootNode* node) override;
    void enter(SGCameraNode* node) override;
    void leave(SGCameraNode* node) override;
    void enter(SGLightsNode* node) override;
    void leave(SGLightsNode* node) override;
    void enter(SGTransformNode* node) override;
    void leave(SGTransformNode* node) override;
    void enter(SGZTransformNode* node) override;
    void leave(SGZTransformNode* node) override;
    void enter(SGGeometryNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    void leave(SGSurfaceGeometryReferenceNode* node) override;
    void enter(SGCurveGeometryReferenceNode* node) override;
    void leave(SGCurveGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

private:
    void setStackMatrices();
    void setStackZState() const;
    void setStackViewport() const;
    void popLighting();
    void attachViewMatrix(SGSurfaceGeometryReferenceNode& node);

    std::vector<Matrix> projectionStack;
    std::vector<Matrix> modelViewStack;
    std::vector<quarl::Rect<int>> viewportStack;
    std::vector<bool> lightingStack;
    bool projectionDirty = true; ///< the top differs from what OpenGL holds
    bool modelViewDirty = true;
    std::vector<ZState> zStateStack;
    smart_ptr<ViewMatrixData> viewMatrix; ///< the last surface's, for the next where nobody has kept it
};
