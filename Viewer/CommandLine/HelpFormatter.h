#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace sgview {

/// Writes the help of a command for a terminal of 100 columns.
class HelpFormatter : public CLI::FormatterBase {
public:
    [[nodiscard]] std::string make_help(CLI::App const* app, std::string name,
                                        CLI::AppFormatMode mode) const override;
};

} // namespace sgview
