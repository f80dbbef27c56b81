#pragma once

#include "Viewer/Commands/TechniqueComparison.h"
#include "Viewer/Platform/Picture.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// What `sgview compare` has found out, and of what.
struct Comparison {
    std::string subject; ///< the model's file, or "demonstration scene"
    std::optional<std::string> animation;
    std::string driver;
    PictureSize size;
    std::vector<double> moments; ///< seconds
    std::vector<TechniqueResult> results;
};

/// For people, a line a technique, and as one JSON object.
void writeText(std::ostream& stream, Comparison const& comparison);
void writeJson(std::ostream& stream, Comparison const& comparison);

/// "at 0.1, 0.25 s": six digits.
[[nodiscard]] std::string momentsInWords(std::vector<double> const& moments);

/// With two decimals.
[[nodiscard]] std::string inMilliseconds(double milliseconds);

} // namespace sgview
