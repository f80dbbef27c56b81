#pragma once

#include "OpenGLRenderer/VertexProgramData.h"
#include "SceneGraph/SGNodeVisitor.h"

#include <string>

/// Draws skinned surfaces through an ARB vertex program that moves their vertices on the card. Goes before
/// the pass that draws, and after the one that sets ViewMatrixData.
///
/// The two programs are made once a root and hang on it. A program that the card refuses is logged, and
/// drawing goes on. A scene's bones must be as few as "Shaders/animationVertexProgram.txt" holds.
class VertexProgramVisitor : public SGNodeVisitor {
public:
    /// \param useForAll  draw surfaces without bones through a vertex program too, instead of OpenGL's fixed
    ///                   functions
    explicit VertexProgramVisitor(bool useForAll) : useForAll_(useForAll) {}

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGRootNode* node) override;
    void leave(SGRootNode* node) override;
    void enter(SGLightsNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    void leave(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    /// The text of a program; see loadAssetText.
    [[nodiscard]] static std::string loadProgram(std::string const& path);

private:
    smart_ptr<VertexProgramData> data_; ///< the current root's, during the walk
    bool useForAll_;
};
