#include "Viewer/Output/PictureFormat.h"

#include "Viewer/Output/OutputName.h"

#include <algorithm>

namespace sgview {

std::string_view nameOf(PictureFormat format)
{
    switch (format) {
    case PictureFormat::png:
        return "png";
    case PictureFormat::webp:
        return "webp";
    case PictureFormat::rgba:
        return "rgba";
    case PictureFormat::y4m:
        return "y4m";
    }
    return "unknown";
}

bool isForeignExtension(std::string_view extension)
{
    constexpr std::array<std::string_view, 16> foreign{".jpg",  ".jpeg", ".gif", ".bmp", ".tif",  ".tiff",
                                                       ".tga",  ".ppm",  ".exr", ".hdr", ".avif", ".mp4",
                                                       ".webm", ".mkv",  ".mov", ".avi"};
    return std::ranges::find(foreign, extension) != foreign.end();
}

PictureFormat formatFor(OutputName const& name)
{
    std::string const extension = name.extension();
    auto const* const found = std::ranges::find_if(allPictureFormats, [&](PictureFormat format) {
        return extension == "." + std::string(nameOf(format));
    });
    return found == allPictureFormats.end() ? PictureFormat::png : *found;
}

} // namespace sgview
