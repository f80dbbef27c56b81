#pragma once

#include "OpenGLRenderer/ParkedData.h"
#include "OpenGLRenderer/SurveyedPass.h"
#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGSharedData.h"

/// A skinned surface's rest pose, parked on its node while a deformed copy is drawn.
class UnanimatedData : public ParkedData<UnanimatedData> {
public:
    smart_ptr<SharedGeometry> geometry;
    smart_ptr<SharedSurfaceGeometry> normals;
};

/// Skins on the processor: gives every surface with bone weights and a pose that is not empty a deformed copy
/// of its geometry and normals for this frame, and keeps it off buffer objects.
///
/// Each vertex becomes the sum of its bones' images of it, by weight; weights are used as given. Normals are
/// skinned through two tangents. A vertex without influences stays at rest.
class ManualAnimator : public SGNodeVisitor, public SurveyedPass {
public:
    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    void addConditions(SceneSurvey::Conditions& conditions) const override { conditions.skin = true; }
    void carryOut(SGRootNode& root, Findings findings) override;
};

/// Puts the rest pose back.
class ManualUnAnimator : public SGNodeVisitor, public SurveyedPass {
public:
    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    void addConditions(SceneSurvey::Conditions&) const override {}
    void carryOut(SGRootNode& root, Findings findings) override { show(*this, root, findings); }
    [[nodiscard]] bool isUndo() const override { return true; }
    [[nodiscard]] bool hasMoreToUndo() const override { return UnanimatedData::any(); }
};
