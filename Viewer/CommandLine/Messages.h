#pragma once

#include "Viewer/CommandLine/FrameProgress.h"
#include "Viewer/CommandLine/Progress.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// What a person wants to hear besides results and errors.
struct MessageOptions {
    bool quiet = false;                               ///< nothing
    std::optional<std::vector<std::string>> channels; ///< of the log; "error" alone where nothing is said
};

/// What sgview says on standard error while it works.
class Messages {
public:
    /// Settles the log's channels for the process: comes before a renderer is loaded.
    explicit Messages(MessageOptions const& options);

    void warn(std::string_view text) const;

    /// Shown, if at all, until the result goes.
    [[nodiscard]] Progress begin(std::string const& work,
                                 std::chrono::milliseconds patience = std::chrono::seconds(1)) const;

    /// The same for a film.
    [[nodiscard]] FrameProgress beginFrames(std::string const& work, std::size_t frames) const;

private:
    bool quiet_;
};

/// One line on standard error: the program's name and the text, whatever is in it.
void printError(std::string_view text);

} // namespace sgview
