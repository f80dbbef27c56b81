#pragma once

#include "SceneGraph/SGRootNode.h"
#include "Viewer/Platform/OffscreenRenderer.h"
#include "Viewer/Platform/PictureDifference.h"

#include <functional>
#include <string>
#include <vector>

namespace sgview {

/// A scene that moves.
struct MovingScene {
    smart_ptr<SGRootNode> root;
    std::function<void(double seconds)> pose;
};

/// How a technique fared.
struct TechniqueResult {
    enum class Verdict {
        reference, ///< the plain technique, which the others are held against
        same,      ///< equal to the last bit at every moment
        alike,     ///< tolerable at every moment
        different,
        lacking, ///< the OpenGL in use does not offer it
    };

    Technique technique = Technique::plain;
    std::string lacking;                        ///< extensions that it needs, with commas between
    double milliseconds = 0.0;                  ///< a frame, the median of several at every moment
    std::vector<PictureDifference> differences; ///< from the plain picture at every moment; else empty

    [[nodiscard]] Verdict verdict() const;

    /// At the moment with most mismatches, and of each moment the largest.
    [[nodiscard]] PictureDifference worst() const;
};

[[nodiscard]] std::string_view nameOf(TechniqueResult::Verdict verdict);

/// Takes what a technique draws at one of the moments, and what the plain one does. Comes for each technique
/// in turn, and the plain one first.
using PictureSink = std::function<void(Technique technique, std::size_t moment, Picture const& picture,
                                       Picture const& plain)>;

/// Draws the scene at every moment by every technique.
/// \throws OpenGLError, TechniqueError
[[nodiscard]] std::vector<TechniqueResult> compareTechniques(OffscreenRenderer& renderer,
                                                             MovingScene const& scene,
                                                             std::vector<double> const& moments,
                                                             PictureSink const& sink);

} // namespace sgview
