#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace sgview {

/// The manual of sgview, section 1, in the man macros.
[[nodiscard]] std::string manPage(CLI::App const& app);

} // namespace sgview
