#include "Viewer/Import/ImportError.h"

#include <algorithm>

namespace sgview {

namespace {

constexpr std::size_t longestLine = 1000;

bool isControl(char c)
{
    auto const code = static_cast<unsigned char>(c);
    return code < 0x20 || code == 0x7F;
}

} // namespace

std::string_view nameOf(ImportFailure failure)
{
    switch (failure) {
    case ImportFailure::notFound:
        return "not found";
    case ImportFailure::notReadable:
        return "not readable";
    case ImportFailure::emptyFile:
        return "empty file";
    case ImportFailure::picture:
        return "picture";
    case ImportFailure::textFile:
        return "text file";
    case ImportFailure::sideFile:
        return "side file";
    case ImportFailure::formatNotRead:
        return "format not read";
    case ImportFailure::pointCloud:
        return "point cloud";
    case ImportFailure::nothingToDraw:
        return "nothing to draw";
    case ImportFailure::broken:
        return "broken";
    case ImportFailure::refusedPath:
        return "refused path";
    case ImportFailure::tooBig:
        return "too big";
    case ImportFailure::crashed:
        return "crashed";
    case ImportFailure::outOfMemory:
        return "out of memory";
    case ImportFailure::timedOut:
        return "timed out";
    case ImportFailure::cancelled:
        return "cancelled";
    }
    return "unknown";
}

std::string oneLine(std::string_view text)
{
    std::string line;
    line.reserve(std::min(text.size(), longestLine));
    for (char const c : text.substr(0, longestLine)) {
        char const shown = isControl(c) ? ' ' : c;
        if (shown != ' ' || (!line.empty() && line.back() != ' '))
            line += shown;
    }
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

ImportError::ImportError(ImportFailure failure, std::string_view message)
    : std::runtime_error(oneLine(message)), failure_(failure)
{
}

ImportError::ImportError(ImportFailure failure, std::string_view file, std::string_view reason)
    : ImportError(failure, std::string(file) + ": " + std::string(reason))
{
}

} // namespace sgview
