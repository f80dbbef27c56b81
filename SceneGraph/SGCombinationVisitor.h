#pragma once

#include "SceneGraph/SGNodeVisitor.h"

#include <array>
#include <vector>

/// Several passes as one: hands each node to every visitor of its list, in list order, on entering and on
/// leaving.
///
/// Each visitor gets the call for the node's own kind and no other, or none where it has no interest in it.
class SGCombinationVisitor : public SGNodeVisitor {
public:
    /// \param visitors  none of them null
    explicit SGCombinationVisitor(std::vector<smart_ptr<SGNodeVisitor>> visitors);

    [[nodiscard]] std::vector<smart_ptr<SGNodeVisitor>> const& getVisitors() const { return visitors_; }

    void enter(SGNode* node) override;
    void leave(SGNode* node) override;

    void enter(SGRootNode* node) override;
    void leave(SGRootNode* node) override;
    void enter(SGOrderedGroupNode* node) override;
    void leave(SGOrderedGroupNode* node) override;
    void enter(SGCameraNode* node) override;
    void leave(SGCameraNode* node) override;
    void enter(SGLightsNode* node) override;
    void leave(SGLightsNode* node) override;
    void enter(SGTransformNode* node) override;
    void leave(SGTransformNode* node) override;
    void enter(SGZTransformNode* node) override;
    void leave(SGZTransformNode* node) override;
    void enter(SGGeometryNode* node) override;
    void leave(SGGeometryNode* node) override;
    void enter(SGQuadNode* node) override;
    void leave(SGQuadNode* node) override;
    void enter(SGGeometryReferenceNode* node) override;
    void leave(SGGeometryReferenceNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    void leave(SGSurfaceGeometryReferenceNode* node) override;
    void enter(SGCurveGeometryReferenceNode* node) override;
    void leave(SGCurveGeometryReferenceNode* node) override;

    [[nodiscard]] SGVisitorInterest interest() const override { return interest_; }

private:
    using VisitorsByKind = std::array<std::vector<SGNodeVisitor*>, nodeKindCount>;

    template <typename Node>
    void enterEach(SGNodeKind kind, Node* node);
    template <typename Node>
    void leaveEach(SGNodeKind kind, Node* node);

    std::vector<smart_ptr<SGNodeVisitor>> visitors_;
    VisitorsByKind entering_; ///< those with an interest in entering each kind
    VisitorsByKind leaving_;
    SGVisitorInterest interest_;
};
