#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// One line of a configuration that sets something.
struct ConfigurationEntry {
    std::string section;         ///< empty before the first one
    std::size_t sectionLine = 0; ///< where that begins
    std::string name;
    std::vector<std::string> values; ///< one, unless it is a list
    bool isList = false;
    std::size_t line = 0; ///< from 1
};

/// A configuration that cannot be read. what() has the reason, and no line.
class ConfigurationError : public std::runtime_error {
public:
    ConfigurationError(std::size_t lineOfError, std::string const& reason)
        : std::runtime_error(reason), line(lineOfError)
    {
    }

    std::size_t line; ///< from 1
};

/// Reads lines "name = value" under sections "[name]", as in TOML: a value is a text in double quotes, in
/// which a backslash stands before quotes and backslashes, or in single ones, or a list of those in brackets
/// on the same line. A word without blanks, commas and brackets needs no quotes. "#" starts a comment.
/// \throws ConfigurationError  anything else, and what is set twice
[[nodiscard]] std::vector<ConfigurationEntry> readConfiguration(std::string_view text);

/// A text in double quotes, as `readConfiguration` reads it.
[[nodiscard]] std::string quotedValue(std::string_view text);

} // namespace sgview
