#pragma once

#include <CLI/CLI.hpp>

#include <filesystem>
#include <optional>
#include <string>

namespace sgview {

/// What settings are for: a printed configuration also has those that need an option which is not given.
enum class ConfigurationUse { running, printing };

/// Which file the settings come from: one that a person named, be it a pipe, or the user's own, which every
/// run reads and none may wait for.
enum class ConfigurationOrigin { named, usual };

/// Gives every option that is not on the command line the value that a configuration file has for it: that of
/// the command's section, or else that before all sections. A value is left out where its option needs one
/// that is not given, or does not go together with one that is. Paths start from the file's folder.
/// \throws UsageError  cannot be read, or has something wrong in it; names the file and the line
void applyConfiguration(CLI::App& app, std::filesystem::path const& file, ConfigurationOrigin origin,
                        ConfigurationUse use);

/// "sgview/config" in the folder of the user's configuration; none if the environment names no such folder.
[[nodiscard]] std::optional<std::filesystem::path> usualConfigurationFile();

/// A configuration file with everything that one may hold: what is set, and the rest as comments.
[[nodiscard]] std::string configurationOf(CLI::App const& app);

} // namespace sgview
