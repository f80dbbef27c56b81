#pragma once

#include "Viewer/Commands/TechniqueComparison.h"
#include "Viewer/Diagnosis/Diagnosis.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// What the diagnostic's comparisons say of a model of the user's.
struct ModelDiagnosis {
    /// The moment at which a scene of `compareTechniques` is in its rest pose.
    static constexpr double atRest = -1.0;

    std::string subject; ///< the model's file
    std::optional<std::string> animation;
    std::vector<double> moments;          ///< rest first, then seconds
    std::vector<TechniqueResult> results; ///< of all moments
    std::vector<double> bending; ///< of each technique, how far the poses are from rest: share of pixels

    /// Techniques that draw the model otherwise than the plain one, with commas between.
    [[nodiscard]] std::string suspects() const;
};

/// Draws the scene at rest and posed by every technique.
/// \throws OpenGLError, TechniqueError
void compareInto(ModelDiagnosis& diagnosis, OffscreenRenderer& renderer, MovingScene const& scene);

/// For people, beside what the diagnostic's own scene says of the driver: a table, and in a sentence whether
/// the file or the driver is at fault.
void writeText(std::ostream& stream, ModelDiagnosis const& model, Diagnosis const& ownScene);

} // namespace sgview
