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

PictureFormat formatFor(OutputName const& name)
{
    std::string const extension = name.extension();
    auto const* const found = std::ranges::find_if(allPictureFormats, [&](PictureFormat format) {
        return extension == "." + std::string(nameOf(format));
    });
    return found == allPictureFormats.end() ? PictureFormat::png : *found;
}

} // namespace sgview
