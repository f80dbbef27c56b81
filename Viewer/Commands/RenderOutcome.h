#pragma once

#include <exception>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace sgview {

/// What became of a model that was to be drawn.
struct RenderOutcome {
    std::filesystem::path model;
    double seconds = 0.0; ///< that it took
    std::vector<std::filesystem::path> pictures;
    std::exception_ptr error; ///< null where all went well
};

/// One line of JSON: file, outcome ("done" or "failed"), seconds, pictures, and an error of kind and message
/// where there is one.
void writeJsonLine(std::ostream& stream, RenderOutcome const& outcome);

/// An exception's message, in one line.
[[nodiscard]] std::string messageOf(std::exception_ptr const& error);

} // namespace sgview
