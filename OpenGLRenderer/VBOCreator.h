#pragma once

#include "OpenGLRenderer/SurveyedPass.h"
#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGSharedData.h"

/// Copies geometry into buffer objects, once per shared data object; they hang on the object as VBOData and
/// are never refreshed. Expects the arrays that ConverterToFloats makes.
///
/// A node with a NoVBOTag gets none. No array buffer is bound after the walk; an element buffer may be.
class VBOCreator : public SGNodeVisitor, public SurveyedPass {
public:
    /// \param useProgramSkinning  whether the card skins, and so needs bone weights and indices too
    explicit VBOCreator(bool useProgramSkinning) : useProgramSkinning_(useProgramSkinning) {}

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void leave(SGRootNode* node) override;
    void enter(SGCurveGeometryReferenceNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    void addConditions(SceneSurvey::Conditions& conditions) const override;
    void carryOut(SGRootNode& root, Findings findings) override { show(*this, root, findings); }

private:
    static void addTo(smart_ptr<SharedGeometry> const& shared);
    static void addTo(smart_ptr<SharedTextureCoords> const& shared);
    static void addTo(smart_ptr<SharedBoneWeights> const& shared);
    static void addToNormals(smart_ptr<SharedSurfaceGeometry> const& shared);
    static void addToFacets(smart_ptr<SharedSurfaceGeometry> const& shared);

    bool useProgramSkinning_;
};
