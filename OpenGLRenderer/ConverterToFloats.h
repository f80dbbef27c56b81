#pragma once

#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGSharedData.h"

/// Converts geometry to the float arrays that OpenGL takes, once per shared data object; they hang on the
/// object as FloatData and are never refreshed.
class ConverterToFloats : public SGNodeVisitor {
public:
    /// \param useProgramSkinning  whether the card skins, and so needs bone weights and indices too
    explicit ConverterToFloats(bool useProgramSkinning) : useProgramSkinning_(useProgramSkinning) {}

    using SGNodeVisitor::enter;
    void enter(SGCurveGeometryReferenceNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;

private:
    static void addTo(smart_ptr<SharedGeometry> shared);
    static void addTo(smart_ptr<SharedSurfaceGeometry> shared);
    static void addTo(smart_ptr<SharedTextureCoords> shared);
    static void addTo(smart_ptr<SharedBoneWeights> shared);

    bool useProgramSkinning_;
};
