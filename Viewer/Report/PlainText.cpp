#include "Viewer/Report/PlainText.h"

#include <boost/locale/utf.hpp>

namespace sgview {

namespace {

using Utf = boost::locale::utf::utf_traits<char>;
using boost::locale::utf::code_point;

constexpr std::string_view replacement = "\xEF\xBF\xBD";

bool isAllowed(code_point code)
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
    for (auto at = text.begin(); at != text.end();) {
        auto next = at;
        code_point const code = Utf::decode(next, text.end());
        bool const isCode = boost::locale::utf::is_valid_codepoint(code);
        if (!isCode)
            next = at + 1;
        plain += isCode && isAllowed(code) ? std::string_view(at, next) : replacement;
        at = next;
    }
    return plain;
}

} // namespace sgview
