#include "Viewer/Import/PictureHeader.h"

#include <algorithm>
#include <array>

namespace sgview {

namespace {

using Content = std::span<std::uint8_t const>;

std::int64_t little(Content content, std::size_t at, std::size_t count)
{
    std::int64_t value = 0;
    for (std::size_t i = count; i-- > 0;)
        value = value * 256 + (at + i < content.size() ? content[at + i] : 0);
    return value;
}

std::int64_t big(Content content, std::size_t at, std::size_t count)
{
    std::int64_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value = value * 256 + (at + i < content.size() ? content[at + i] : 0);
    return value;
}

bool startsWith(Content content, std::string_view magic, std::size_t at = 0)
{
    return content.size() >= at + magic.size() &&
           std::equal(magic.begin(), magic.end(), content.begin() + static_cast<std::ptrdiff_t>(at),
                      [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

/// ITU-T T.81, B.2.2: the frame header holds the size.
PictureHeader jpeg(Content content)
{
    std::size_t at = 2;
    while (at + 9 < content.size()) {
        if (content[at] != 0xFF) {
            ++at;
            continue;
        }
        std::uint8_t const marker = content[at + 1];
        bool const frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame)
            return {"JPG", big(content, at + 7, 2), big(content, at + 5, 2)};
        bool const alone = marker == 0xFF || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
        at += alone ? 1 : 2 + static_cast<std::size_t>(big(content, at + 2, 2));
    }
    return {"JPG", 0, 0};
}

PictureHeader bitmap(Content content)
{
    constexpr std::int64_t coreHeader = 12; // 16-bit sizes
    if (little(content, 14, 4) == coreHeader)
        return {"BMP", little(content, 18, 2), little(content, 20, 2)};
    auto const height = static_cast<std::int32_t>(little(content, 22, 4)); // negative: rows from the top
    return {"BMP", little(content, 18, 4), std::abs(static_cast<std::int64_t>(height))};
}

bool isBitmap(Content content)
{
    constexpr std::array<std::int64_t, 7> headerSizes{12, 40, 52, 56, 64, 108, 124};
    return startsWith(content, "BM") && content.size() > 26 &&
           std::ranges::find(headerSizes, little(content, 14, 4)) != headerSizes.end();
}

/// RFC 9649, section 2.
PictureHeader webp(Content content)
{
    if (startsWith(content, "VP8X", 12))
        return {"WEBP", little(content, 24, 3) + 1, little(content, 27, 3) + 1};
    if (startsWith(content, "VP8L", 12)) {
        std::int64_t const bits = little(content, 21, 4);
        return {"WEBP", (bits & 0x3FFF) + 1, ((bits >> 14) & 0x3FFF) + 1};
    }
    return {"WEBP", little(content, 26, 2) & 0x3FFF, little(content, 28, 2) & 0x3FFF};
}

bool isTarga(Content content)
{
    constexpr std::array<std::uint8_t, 6> types{1, 2, 3, 9, 10, 11};
    constexpr std::array<std::uint8_t, 5> depths{8, 15, 16, 24, 32};
    return content.size() >= 18 && content[1] <= 1 && std::ranges::find(types, content[2]) != types.end() &&
           std::ranges::find(depths, content[16]) != depths.end();
}

constexpr std::array<std::string_view, 9> notDecoded{std::string_view("II*\0", 4),
                                                     std::string_view("MM\0*", 4),
                                                     "8BPS",
                                                     "DDS ",
                                                     "\xABKTX",
                                                     "#?RADIANCE",
                                                     "v/1\x01",
                                                     "gimp xcf",
                                                     std::string_view("\0\0\1\0", 4)};

} // namespace

std::optional<PictureHeader> readPictureHeader(Content content, std::string_view extension)
{
    if (startsWith(content, "\x89PNG\r\n\x1A\n"))
        return PictureHeader{"PNG", big(content, 16, 4), big(content, 20, 4)};
    if (startsWith(content, "\xFF\xD8\xFF"))
        return jpeg(content);
    if (isBitmap(content))
        return bitmap(content);
    if (startsWith(content, "GIF87a") || startsWith(content, "GIF89a"))
        return PictureHeader{"GIF", little(content, 6, 2), little(content, 8, 2)};
    if (startsWith(content, "RIFF") && startsWith(content, "WEBP", 8))
        return webp(content);
    if (extension == "pcx" && startsWith(content, "\x0A"))
        return PictureHeader{"PCX", little(content, 8, 2) - little(content, 4, 2) + 1,
                             little(content, 10, 2) - little(content, 6, 2) + 1};
    if (extension == "tga" && isTarga(content))
        return PictureHeader{"TGA", little(content, 12, 2), little(content, 14, 2)};
    if (std::ranges::any_of(notDecoded, [&](std::string_view magic) { return startsWith(content, magic); }))
        return PictureHeader{};
    return {};
}

} // namespace sgview
