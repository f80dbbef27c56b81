#pragma once

#include <string>

/// How a command line for sh ended.
struct ShellOutcome {
    int status = -1; ///< exit status
    std::string output;
};

/// Runs a command line by sh; both of its streams are the output.
[[nodiscard]] ShellOutcome runInShell(std::string const& commandLine);

/// Whether a program can be run by its name.
[[nodiscard]] bool isInstalled(std::string const& program);
