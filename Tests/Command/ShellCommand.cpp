#include "Tests/Command/ShellCommand.h"

#include <array>
#include <cstdio>

#include <sys/wait.h>

ShellOutcome runInShell(std::string const& commandLine)
{
    ShellOutcome outcome;
    FILE* const stream = ::popen(("exec 2>&1\n" + commandLine).c_str(), "r");
    if (!stream)
        return outcome;
    std::array<char, 4096> part{};
    for (std::size_t length = 0; (length = std::fread(part.data(), 1, part.size(), stream)) > 0;)
        outcome.output.append(part.data(), length);
    int const status = ::pclose(stream);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

bool isInstalled(std::string const& program)
{
    return runInShell("command -v " + program).status == 0;
}
