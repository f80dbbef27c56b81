#pragma once

#include <boost/locale/utf.hpp>

#include <cstdint>
#include <string_view>

namespace sgview {

/// What stands for a byte that is no part of a valid code.
inline constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

/// Calls `take(code, bytes)` for each character of a text of unknown origin, in order; a byte that is no part
/// of valid UTF-8 comes as U+FFFD.
template <typename Take>
void forEachCodePoint(std::string_view text, Take take)
{
    namespace utf = boost::locale::utf;
    constexpr std::uint32_t replacement = 0xFFFD;
    while (!text.empty()) {
        auto next = text.begin();
        utf::code_point const code = utf::utf_traits<char>::decode(next, text.end());
        if (utf::is_valid_codepoint(code)) {
            take(std::uint32_t{code}, std::string_view(text.begin(), next));
            text.remove_prefix(static_cast<std::size_t>(next - text.begin()));
        } else {
            take(replacement, replacementCharacter);
            text.remove_prefix(1);
        }
    }
}

} // namespace sgview
