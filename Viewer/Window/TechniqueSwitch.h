#pragma once

#include "SceneGraph/SGRenderer.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <string>
#include <vector>

namespace sgview {

/// Which technique draws, why, and which others could. Needs the renderer's context current.
class TechniqueSwitch {
public:
    /// A technique, and what the OpenGL in use lacks for it; empty where it lacks nothing.
    struct Candidate {
        Technique technique;
        std::string lacking;
    };

    /// \throws TechniqueError
    TechniqueSwitch(SGRenderer& renderer, ChosenTechnique first);

    [[nodiscard]] Technique current() const { return current_; }

    /// "asked for by --technique"
    [[nodiscard]] std::string const& reason() const { return reason_; }
    [[nodiscard]] std::vector<Candidate> const& candidates() const { return candidates_; }

    /// Draws by another technique from now on.
    /// \throws TechniqueError
    void use(Technique technique, std::string reason);

    /// The one so many steps further, or back below 0, of those that lack nothing.
    /// \throws TechniqueError
    void move(int steps, std::string reason);

private:
    SGRenderer& renderer_;
    std::vector<Candidate> candidates_;
    Technique current_ = Technique::plain;
    std::string reason_;
};

} // namespace sgview
