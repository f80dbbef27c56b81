#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace sgview {

// Scripts by which a shell completes sgview's commands, options and values.

[[nodiscard]] std::string bashCompletion(CLI::App const& app);

/// For a file "_sgview" in a folder of $fpath.
[[nodiscard]] std::string zshCompletion(CLI::App const& app);

[[nodiscard]] std::string fishCompletion(CLI::App const& app);

} // namespace sgview
