#include "Viewer/Platform/PngEncoder.h"

#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Report/PlainText.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace sgview {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Of the signature and the header chunk, which stands first.
constexpr std::size_t headLength = 8 + 25;

void append(Bytes& bytes, std::string_view text)
{
    bytes.insert(bytes.end(), text.begin(), text.end());
}

/// Most significant byte first.
void append(Bytes& bytes, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
}

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char letter) { return letter >= ' ' && letter <= '~'; });
}

/// PNG, third edition, 11.3.3: "tEXt" for what is ASCII, "iTXt" for other text in UTF-8.
Bytes textChunk(std::string const& keyword, std::string const& text)
{
    Bytes content;
    append(content, isAscii(text) ? "tEXt" : "iTXt");
    append(content, keyword);
    content.push_back(0);
    if (!isAscii(text))
        content.insert(content.end(), 4, 0); // not compressed, neither a language nor a translated keyword
    append(content, asPlainText(text));

    Bytes chunk;
    append(chunk, static_cast<std::uint32_t>(content.size() - 4));
    chunk.insert(chunk.end(), content.begin(), content.end());
    append(chunk, static_cast<std::uint32_t>(::crc32_z(0, content.data(), content.size())));
    return chunk;
}

/// What a blending surface leaves in the frame's alpha is no opacity of the picture.
Bytes withoutAlpha(Picture const& picture)
{
    Bytes colours;
    colours.reserve(picture.pixels.size() / 4 * 3);
    for (std::size_t i = 0; i + 3 < picture.pixels.size(); i += 4)
        colours.insert(colours.end(), &picture.pixels[i], &picture.pixels[i] + 3);
    return colours;
}

Bytes encode(PictureSize size, png_uint_32 format, Bytes const& pixels)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(size.width);
    image.height = static_cast<png_uint_32>(size.height);
    image.format = format;
    png_alloc_size_t length = PNG_IMAGE_PNG_SIZE_MAX(image);
    // Seldom filled, so not to be touched beyond what is.
    auto const bytes = std::make_unique_for_overwrite<std::uint8_t[]>(length);
    if (png_image_write_to_memory(&image, bytes.get(), &length, 0, pixels.data(), 0, nullptr) == 0)
        throw OutputError(std::string("PNG: ") + image.message);
    return {bytes.get(), bytes.get() + length};
}

} // namespace

std::vector<std::uint8_t> encodePng(Picture const& picture, bool transparent, PictureNotes const& notes)
{
    Bytes file = transparent ? encode(picture.size, PNG_FORMAT_RGBA, picture.pixels)
                             : encode(picture.size, PNG_FORMAT_RGB, withoutAlpha(picture));
    Bytes chunks;
    for (auto const& [keyword, text] : notes) {
        Bytes const chunk = textChunk(keyword, text);
        chunks.insert(chunks.end(), chunk.begin(), chunk.end());
    }
    file.insert(file.begin() + headLength, chunks.begin(), chunks.end());
    return file;
}

} // namespace sgview
