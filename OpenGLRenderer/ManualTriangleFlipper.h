#pragma once

#include "OpenGLRenderer/ParkedData.h"
#include "OpenGLRenderer/RecentAccessDatabase.h"
#include "OpenGLRenderer/SurveyedPass.h"
#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGSharedData.h"
#include "SceneGraph/SGTransformNode.h"

#include <utility>

/// A mirrored surface's own facets, parked on its node while flipped ones stand in for them.
class UnflippedData : public ParkedData<UnflippedData> {
public:
    explicit UnflippedData(smart_ptr<SharedSurfaceGeometry> facets_) : facets(std::move(facets_)) {}

    smart_ptr<SharedSurfaceGeometry> facets;
};

using TriangleFlipperDatabase =
    RecentAccessDatabase<smart_ptr<SurfaceGeometryData const>, SharedSurfaceGeometry, 17>;

/// Gives every surface under a mirroring path facets of the opposite winding for this frame, so that its
/// front stays its front. Surfaces with the same facets share one flipped copy, which is kept on the root
/// while it is in use.
///
/// A path mirrors under an odd number of transforms whose scale is not greater than 0.
class ManualTriangleFlipper : public SGNodeVisitor, public SurveyedPass {
public:
    /// \param skipAnimated  leave surfaces that have bone transforms alone
    explicit ManualTriangleFlipper(bool skipAnimated) : skipAnimated_(skipAnimated) {}

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGRootNode* node) override;
    void leave(SGRootNode* node) override;
    void enter(SGTransformNode* node) override;
    void leave(SGTransformNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    /// Whether the transform is one that mirrors what is below it.
    [[nodiscard]] static bool mirrors(SGTransformNode const& node)
    {
        return !(node.transform.getScale() > 0.0); // so that NaN mirrors too
    }

    void addConditions(SceneSurvey::Conditions& conditions) const override;
    void carryOut(SGRootNode& root, Findings findings) override;

private:
    [[nodiscard]] smart_ptr<SharedSurfaceGeometry>
    flippedCopy(smart_ptr<SurfaceGeometryData const> const& facets);

    bool skipAnimated_;
    bool flipped = false;                        ///< the current path mirrors
    smart_ptr<TriangleFlipperDatabase> database; ///< the current root's, during the walk
};

/// Puts the unflipped facets back.
class ManualTriangleUnFlipper : public SGNodeVisitor, public SurveyedPass {
public:
    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    void addConditions(SceneSurvey::Conditions&) const override {}
    void carryOut(SGRootNode& root, Findings findings) override { show(*this, root, findings); }
    [[nodiscard]] bool isUndo() const override { return true; }
    [[nodiscard]] bool hasMoreToUndo() const override { return UnflippedData::any(); }
};
