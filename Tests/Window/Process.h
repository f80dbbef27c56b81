#pragma once

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

/// A program in the background; ended with the object if it has not ended by itself.
class Process {
public:
    /// \param environment  on top of the test's own; none unsets
    /// \param errors       file for what it says on standard error
    Process(std::vector<std::string> arguments,
            std::map<std::string, std::optional<std::string>> const& environment, std::string const& errors);
    Process(Process const&) = delete;
    Process& operator=(Process const&) = delete;
    ~Process();

    /// What it writes to standard output up to the first line's end; empty where it ends before.
    [[nodiscard]] std::string readLine() const;

    /// All that it writes there until it ends.
    [[nodiscard]] std::string readAll() const;

    /// Its exit status, or 128 and a signal's number; nothing while it runs.
    [[nodiscard]] std::optional<int> status();

    /// Whether none of its threads runs or waits for a processor.
    [[nodiscard]] bool isResting() const;

    /// Processor time it has used so far, seconds; its own, not its children's.
    [[nodiscard]] double processorTime() const;

private:
    pid_t process_ = -1;
    int output_ = -1;
    std::optional<int> status_;
};
