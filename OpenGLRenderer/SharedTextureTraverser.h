#pragma once

#include "OpenGLRenderer/SurveyedPass.h"
#include "SceneGraph/SGNodeVisitor.h"

/// Makes a texture, with all its mipmaps, of every image in the scene that has none yet. Walks the tree
/// itself when it is shown the root.
///
/// An image is uploaded once in its life: a failure is logged and not tried again, and pixels that change
/// later are not seen.
class SharedTextureTraverser : public SGNodeVisitor, public SurveyedPass {
public:
    using SGNodeVisitor::enter;
    void enter(SGRootNode* node) override;

    void addConditions(SceneSurvey::Conditions& conditions) const override { conditions.textures = true; }
    void carryOut(SGRootNode& root, Findings findings) override;
};
