#pragma once

#include "Maths/BoneTransform.h"
#include "OpenGLRenderer/Capabilities.h"
#include "SceneGraph/SGRootNode.h"

#include <functional>
#include <string>
#include <vector>

namespace Diagnostic {

/// Has the renderer draw as a verdict says from now on.
void applyCaps(Capabilities const& caps);

} // namespace Diagnostic

/// One run of the graphics diagnostic: tries on a scene of its own what the card claims, applies the verdict
/// and stores it. Its log lines say what was found.
class DiagnosticRun {
public:
    DiagnosticRun();

    /// \param getCardCaps  what is tried at most, in place of the card's own claims
    explicit DiagnosticRun(std::function<Capabilities()> getCardCaps);

    void carryOut();

private:
    struct SkinningTechnique;
    using Image = std::vector<unsigned char>;

    void judgeBuffers();
    void judgeSkinning();

    /// Measures a technique that the verdict has been set to, and takes it out of the verdict again unless it
    /// is fast enough and draws the same pictures as plain drawing.
    /// \return its rate, or 0 where it is out
    double rateIfRight(SkinningTechnique const& technique);
    double rejected(SkinningTechnique const& technique, std::string const& reason);
    void distrustEverything();
    void chooseSkinning();

    /// The strategy first, or the old one's passes could hang data on the nodes again.
    void applyAfresh();
    void poseAtRest();
    void poseBent();
    void pose(BoneTransform const& bone);
    [[nodiscard]] Image drawAndRead();

    static SkinningTechnique const vertexProgram;
    static SkinningTechnique const vertexShader;

    std::function<Capabilities()> getCardCaps_;
    smart_ptr<SGRootNode> root_;
    Capabilities card_;
    Capabilities verdict_;
    Image reference_; ///< drawn plainly, at rest
    // Frames per second; 0 for what was not measured or was found wanting.
    double baseRate_ = 0.0;
    double programRate_ = 0.0;
    double shaderRate_ = 0.0;
    bool everythingDistrusted_ = false;
};
