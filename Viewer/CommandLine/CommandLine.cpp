#include "Viewer/CommandLine/CommandLine.h"

#include "Viewer/CommandLine/CommandTable.h"
#include "Viewer/Platform/OutputFile.h"

#include <iostream>

namespace sgview {

std::optional<CommandLine> parseCommandLine(int argc, char const* const* argv)
{
    CommandTable table;
    try {
        table.parse(argc, argv);
    } catch (CLI::Success const& asked) {
        table.app().exit(asked, std::cout, std::cerr);
        flushStandardOutput();
        return std::nullopt;
    }
    if (std::optional<std::string> const answer = table.answer()) {
        std::cout << *answer;
        flushStandardOutput();
        return std::nullopt;
    }
    return table.commandLine();
}

} // namespace sgview
