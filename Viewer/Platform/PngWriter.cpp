#include "Viewer/Platform/PngWriter.h"

#include "Viewer/Platform/OutputFile.h"

#include <png.h>

#include <cerrno>

namespace sgview {

namespace {

/// What a blending surface leaves in the frame's alpha is no opacity of the picture.
std::vector<std::uint8_t> withoutAlpha(Picture const& picture)
{
    std::vector<std::uint8_t> colours;
    colours.reserve(picture.pixels.size() / 4 * 3);
    for (std::size_t i = 0; i + 3 < picture.pixels.size(); i += 4)
        colours.insert(colours.end(), &picture.pixels[i], &picture.pixels[i] + 3);
    return colours;
}

} // namespace

void writePng(std::filesystem::path const& path, Picture const& picture)
{
    std::vector<std::uint8_t> const colours = withoutAlpha(picture);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.size.width);
    image.height = static_cast<png_uint_32>(picture.size.height);
    image.format = PNG_FORMAT_RGB;

    OutputFile file(path);
    errno = 0;
    if (png_image_write_to_stdio(&image, file.stream(), 0, colours.data(), 0, nullptr) == 0) {
        if (errno != 0)
            file.fail(errno);
        throw OutputError(path.string() + ": " + image.message);
    }
    file.commit();
}

} // namespace sgview
