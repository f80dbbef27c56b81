#pragma once

#include <array>
#include <string_view>

namespace sgview {

class OutputName;

/// How pictures are written: as PNG; as WebP, still or moving; as frames for a film encoder, raw or in a Y4M
/// stream.
enum class PictureFormat { png, webp, rgba, y4m };

inline constexpr std::array<PictureFormat, 4> allPictureFormats{PictureFormat::png, PictureFormat::webp,
                                                                PictureFormat::rgba, PictureFormat::y4m};

/// As a person types it: "png".
[[nodiscard]] std::string_view nameOf(PictureFormat format);

/// Whether one file holds as many frames as there are.
[[nodiscard]] constexpr bool holdsFilms(PictureFormat format)
{
    return format != PictureFormat::png;
}

/// The extension of names for pictures and films in a format that is not written here, such as ".jpg".
[[nodiscard]] bool isForeignExtension(std::string_view extension);

/// What names of this kind are for; PNG where they do not tell.
[[nodiscard]] PictureFormat formatFor(OutputName const& name);

} // namespace sgview
