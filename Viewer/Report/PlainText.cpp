#include "Viewer/Report/PlainText.h"

#include "Viewer/Report/CodePoints.h"

namespace sgview {

namespace {

bool isAllowed(std::uint32_t code)
{
    bool const isControl = (code < 0x20 && code != '\t' && code != '\n') || (code >= 0x7F && code < 0xA0);
    bool const isNoncharacter = (code >= 0xFDD0 && code < 0xFDF0) || (code & 0xFFFE) == 0xFFFE;
    return !isControl && !isNoncharacter;
}

} // namespace

std::string asPlainText(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    forEachCodePoint(text, [&plain](std::uint32_t code, std::string_view bytes) {
        plain += isAllowed(code) ? bytes : replacementCharacter;
    });
    return plain;
}

} // namespace sgview
