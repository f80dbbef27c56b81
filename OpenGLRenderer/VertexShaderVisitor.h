#pragma once

#include "Maths/BoneTransform.h"
#include "OpenGLRenderer/VertexShaderData.h"
#include "SceneGraph/SGNodeVisitor.h"

#include <string>
#include <vector>

/// Draws skinned surfaces through a vertex shader that moves their vertices on the card. Goes before the pass
/// that draws, and after the one that sets ViewMatrixData.
///
/// The program is made once a root and hangs on it; what the card says of it is logged on the "opengl"
/// channel, and drawing goes on whatever it says. A scene's bones must be as few as
/// "Shaders/animationVertexShader.txt" holds.
class VertexShaderVisitor : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGRootNode* node) override;
    void leave(SGRootNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    void leave(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    /// The text of a shader; see loadAssetText.
    [[nodiscard]] static std::string loadShader(std::string const& path);

private:
    [[nodiscard]] GLint uniform(char const* name) const;
    void setViewRotation(Matrix3 const& rotation) const;
    void setPose(std::vector<BoneTransform> const& pose) const;

    smart_ptr<VertexShaderData> data_; ///< the current root's, during the walk
};
