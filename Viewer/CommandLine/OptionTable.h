#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace sgview {

// The table of commands and options, as what is made from it wants to read it: help, the configuration file,
// completion and the manual.

/// Options that belong together, in the order they were told.
struct OptionGroup {
    std::string name;
    std::vector<CLI::Option const*> options;
};

[[nodiscard]] std::vector<CLI::App const*> commandsOf(CLI::App const& app);

/// All that have names with dashes, by groups.
[[nodiscard]] std::vector<OptionGroup> groupsOf(CLI::App const& command);

/// The same without groups.
[[nodiscard]] std::vector<CLI::Option const*> optionsOf(CLI::App const& command);

/// What stands on the command line without an option, such as FILE; null where there is nothing.
[[nodiscard]] CLI::Option const* argumentOf(CLI::App const& command);

/// "FILE...": as often as a person likes.
[[nodiscard]] std::string argumentName(CLI::Option const& argument);

[[nodiscard]] bool takesValue(CLI::Option const& option);

/// Whether it cannot stand without the value it takes.
[[nodiscard]] bool needsValue(CLI::Option const& option);
[[nodiscard]] bool takesSeveral(CLI::Option const& option);

/// All names, the short ones first: "-s", "--size".
[[nodiscard]] std::vector<std::string> namesOf(CLI::Option const& option);

/// The name without dashes, as configuration files have it.
[[nodiscard]] std::string plainName(CLI::Option const& option);

/// What it does, with what other option, and its default.
[[nodiscard]] std::string descriptionOf(CLI::Option const& option);

/// What it does, in a few words.
[[nodiscard]] std::string summaryOf(CLI::Option const& option);

/// What may be written for an option's value, as far as that is known beforehand.
struct Values {
    enum class Files { none, any, folders, models };

    std::vector<std::string> words;
    Files files = Files::none;
};

/// \param app  whose commands are values too
[[nodiscard]] Values valuesOf(CLI::App const& app, CLI::Option const& option);

/// Whether a value only asks which ones there are.
[[nodiscard]] bool isQuestion(CLI::Option const& option, std::string const& value);

/// Whether its value names a file or a folder.
[[nodiscard]] bool takesPath(CLI::Option const& option);

/// The part of a footer before its examples, or from there on.
[[nodiscard]] std::string notesOf(CLI::App const& command);
[[nodiscard]] std::string examplesOf(CLI::App const& command);

[[nodiscard]] std::string joined(std::vector<std::string> const& words, std::string const& separator);

/// A text in lines of at most so many characters, unless a word is longer.
[[nodiscard]] std::vector<std::string> wrapped(std::string const& text, std::size_t width);

} // namespace sgview
