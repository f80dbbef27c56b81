#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"
#include "Viewer/Platform/Technique.h"

#include <optional>
#include <string>
#include <vector>

namespace sgview {

// What a run found, as people read it wherever they read it.

/// How much brighter than they are differences of the diagnostic's pictures are shown.
inline constexpr int differenceAmplification = 32;

/// A technique's speed.
struct RateFigure {
    Diagnosis::Step step = Diagnosis::Step::plain;
    double share = 0.0; ///< of the fastest one's, 0 to 1
    std::string text;   ///< frames per second: "79.99"; "-" where it was not measured
    std::string remark; ///< why it was not; empty where it was
};

/// Of the techniques that were timed, in the order of the steps.
[[nodiscard]] std::vector<RateFigure> rateFigures(Diagnosis const& diagnosis);

/// "vertex program, bent | plain, bent"
[[nodiscard]] std::string pairOf(Diagnosis::Comparison const& comparison);

/// "under 1% wanted: good"
[[nodiscard]] std::string resultOf(Diagnosis::Comparison const& comparison);

/// What the two pictures differ in, so much brighter; none where one of them is not there.
[[nodiscard]] std::optional<Picture> differenceOf(Diagnosis const& diagnosis,
                                                  Diagnosis::Comparison const& comparison);

/// "on, not slower: 81 frames per second with them, 79.99 without"
[[nodiscard]] std::string inWords(Diagnosis::Ruling const& ruling, bool isDecided);

/// "buffer objects, vertex program", or "nothing".
[[nodiscard]] std::string inWords(TechniqueFlags const& flags);

/// "16 surfaces of 10,000 vertices, in 3.2 s"
[[nodiscard]] std::string sceneInWords(Diagnosis const& diagnosis);

/// What is the matter with the scene; empty where nothing is.
[[nodiscard]] std::string remarkOnScene(Diagnosis const& diagnosis);

/// Why sgview draws by a verdict's technique.
inline constexpr char const* bestReason = "what the graphics diagnostic found best for this card";

/// What a verdict makes sgview draw by.
[[nodiscard]] Technique bestTechnique(TechniqueFlags const& verdict);

} // namespace sgview
