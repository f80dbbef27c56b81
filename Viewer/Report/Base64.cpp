#include "Viewer/Report/Base64.h"

#include <algorithm>
#include <string_view>

namespace sgview {

std::string asBase64(std::span<std::uint8_t const> bytes)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t bytesPerGroup = 3;
    constexpr std::size_t digitsPerGroup = 4;
    std::string text;
    text.reserve((bytes.size() + bytesPerGroup - 1) / bytesPerGroup * digitsPerGroup);
    for (std::size_t at = 0; at < bytes.size(); at += bytesPerGroup) {
        std::size_t const held = std::min(bytesPerGroup, bytes.size() - at);
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < bytesPerGroup; ++i)
            group = group << 8 | (i < held ? bytes[at + i] : 0U);
        for (std::size_t i = 0; i < digitsPerGroup; ++i)
            text += i <= held ? digits[group >> (18 - 6 * i) & 0x3F] : '=';
    }
    return text;
}

} // namespace sgview
