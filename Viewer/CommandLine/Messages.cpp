#include "Viewer/CommandLine/Messages.h"

#include "Utilities/Log.h"
#include "Viewer/Import/ImportError.h"

#include <iostream>

namespace sgview {

Messages::Messages(MessageOptions const& options) : quiet_(options.quiet)
{
    Log& log = Log::getInstance();
    log.disableOthers();
    if (quiet_)
        return;
    for (std::string const& channel : options.channels.value_or(std::vector<std::string>{"error"}))
        log.setEnabled(channel, true);
}

void Messages::warn(std::string_view text) const
{
    if (!quiet_)
        printError("warning: " + std::string(text));
}

Progress Messages::begin(std::string const& work, std::chrono::milliseconds patience) const
{
    constexpr int noTerminal = -1;
    return Progress(oneLine(work), quiet_ ? noTerminal : STDERR_FILENO, patience);
}

FrameProgress Messages::beginFrames(std::string const& work, std::size_t frames) const
{
    constexpr int nowhere = -1;
    return FrameProgress(oneLine(work), frames, quiet_ ? nowhere : STDERR_FILENO);
}

void printError(std::string_view text)
{
    std::cerr << "sgview: " + oneLine(text) + "\n";
}

} // namespace sgview
