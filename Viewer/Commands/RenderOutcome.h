#pragma once

#include "Viewer/Platform/Technique.h"

#include <exception>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// What became of a model that was to be drawn.
struct RenderOutcome {
    std::filesystem::path model;
    double seconds = 0.0; ///< that it took
    std::vector<std::filesystem::path> pictures;
    std::optional<Technique> technique; ///< that drew it, if any did
    std::vector<std::string> warnings;
    std::exception_ptr error; ///< null where all went well
};

/// One line of JSON: file, outcome ("done" or "failed"), seconds, technique (null where none drew), pictures,
/// warnings, and an error of kind and message where there is one.
void writeJsonLine(std::ostream& stream, RenderOutcome const& outcome);

/// An exception's message, in one line.
[[nodiscard]] std::string messageOf(std::exception_ptr const& error);

/// Of a model among others that could not be drawn: the message, with the model's file where it names none.
[[nodiscard]] std::string errorLine(RenderOutcome const& outcome);

} // namespace sgview
