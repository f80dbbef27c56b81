#include "Viewer/Report/PlainText.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace sgview {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// How the first byte of a code announces it (RFC 3629).
struct Form {
    unsigned char mask;
    unsigned char lead;
    std::size_t bytes;
    std::uint32_t least; ///< a smaller code has a shorter form
};
constexpr Form forms[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

struct Code {
    std::uint32_t value = 0;
    std::size_t bytes = 0;
};

unsigned char byteAt(std::string_view text, std::size_t at)
{
    return static_cast<unsigned char>(text[at]);
}

/// The code that a text begins with.
std::optional<Code> firstCode(std::string_view text)
{
    auto const* const form =
        std::ranges::find_if(forms, [&](Form const& f) { return (byteAt(text, 0) & f.mask) == f.lead; });
    if (form == std::end(forms) || text.size() < form->bytes)
        return {};
    std::uint32_t value = byteAt(text, 0) & static_cast<unsigned char>(~form->mask);
    for (std::size_t i = 1; i < form->bytes; ++i) {
        if ((byteAt(text, i) & 0xC0) != 0x80)
            return {};
        value = value << 6 | (byteAt(text, i) & 0x3FU);
    }
    bool const isSurrogate = value >= 0xD800 && value < 0xE000;
    if (value < form->least || value > 0x10FFFF || isSurrogate)
        return {};
    return Code{value, form->bytes};
}

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
    while (!text.empty()) {
        std::optional<Code> const code = firstCode(text);
        std::size_t const bytes = code ? code->bytes : 1;
        plain += code && isAllowed(code->value) ? text.substr(0, bytes) : replacement;
        text.remove_prefix(bytes);
    }
    return plain;
}

} // namespace sgview
