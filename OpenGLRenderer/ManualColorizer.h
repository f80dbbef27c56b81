#pragma once

#include "OpenGLRenderer/ColorizedTextureInfo.h"
#include "OpenGLRenderer/ParkedData.h"
#include "OpenGLRenderer/RecentAccessDatabase.h"
#include "OpenGLRenderer/SurveyedPass.h"
#include "SceneGraph/SGNodeVisitor.h"

#include <cstdint>
#include <unordered_map>

/// A node's pictures that are drawn tinted, by layer, parked while the tinted copies stand in for them.
class UncolorizedTextureData : public ParkedData<UncolorizedTextureData> {
public:
    std::unordered_map<std::int32_t, smart_ptr<SharedImage>> textures;
};

using ColorizerDatabase = RecentAccessDatabase<ColorizedTextureInfo, SharedImage, 17>;

/// Gives every texture layer that asks for it a tinted copy of its picture for this frame. Nodes that tint
/// the same picture in the same colours share one copy, which is kept on the root while it is in use.
class ManualColorizer : public SGNodeVisitor, public SurveyedPass {
public:
    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGRootNode* node) override;
    void leave(SGRootNode* node) override;
    void enter(SGGeometryNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    void addConditions(SceneSurvey::Conditions& conditions) const override { conditions.tint = true; }
    void carryOut(SGRootNode& root, Findings findings) override { show(*this, root, findings); }

private:
    [[nodiscard]] smart_ptr<SharedImage> tinted(ColorizedTextureInfo const& info);

    smart_ptr<ColorizerDatabase> database; ///< the current root's, during the walk
};

/// Puts the untinted pictures back.
class ManualUnColorizer : public SGNodeVisitor, public SurveyedPass {
public:
    using SGNodeVisitor::enter;
    void enter(SGGeometryNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    void addConditions(SceneSurvey::Conditions&) const override {}
    void carryOut(SGRootNode& root, Findings findings) override { show(*this, root, findings); }
    [[nodiscard]] bool isUndo() const override { return true; }
    [[nodiscard]] bool hasMoreToUndo() const override { return UncolorizedTextureData::any(); }
};
