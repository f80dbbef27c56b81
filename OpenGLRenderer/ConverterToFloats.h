#pragma once

#include "OpenGLRenderer/SurveyedPass.h"
#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGSharedData.h"

/// Converts geometry to the float arrays that OpenGL takes, once per shared data object; they hang on the
/// object as FloatData and are never refreshed.
class ConverterToFloats : public SGNodeVisitor, public SurveyedPass {
public:
    /// \param useProgramSkinning  whether the card skins, and so needs bone weights and indices too
    explicit ConverterToFloats(bool useProgramSkinning) : useProgramSkinning_(useProgramSkinning) {}

    using SGNodeVisitor::enter;
    void enter(SGCurveGeometryReferenceNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    void addConditions(SceneSurvey::Conditions& conditions) const override;
    void carryOut(SGRootNode& root, Findings findings) override { show(*this, root, findings); }

private:
    static void addTo(smart_ptr<SharedGeometry> const& shared);
    static void addTo(smart_ptr<SharedSurfaceGeometry> const& shared);
    static void addTo(smart_ptr<SharedTextureCoords> const& shared);
    static void addTo(smart_ptr<SharedBoneWeights> const& shared);

    bool useProgramSkinning_;
};
