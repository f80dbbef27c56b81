#include "Viewer/Import/ImportError.h"

#include "Viewer/Report/CodePoints.h"

namespace sgview {

namespace {

constexpr std::size_t longestLine = 1000;

/// Whether a terminal takes the character for an order, breaks the line there, or turns the text around.
bool steersTerminals(std::uint32_t code)
{
    bool const isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    bool const breaksLines = code == 0x2028 || code == 0x2029;
    bool const turnsText = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return isControl || breaksLines || turnsText;
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
    // After a long name comes the reason.
    if (text.size() > longestLine)
        return oneLine(text.substr(0, longestLine / 2)) + " ... " +
               oneLine(text.substr(text.size() - longestLine / 2));
    std::string line;
    line.reserve(text.size());
    forEachCodePoint(text, [&line](std::uint32_t code, std::string_view bytes) {
        std::string_view const shown = steersTerminals(code) ? " " : bytes;
        if (shown != " " || (!line.empty() && line.back() != ' '))
            line += shown;
    });
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
