#include "Viewer/Platform/PngWriter.h"

#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Platform/PngEncoder.h"

#include <cstdio>

namespace sgview {

void writePng(std::filesystem::path const& path, Picture const& picture)
{
    OutputFile file(path);
    std::vector<std::uint8_t> const bytes = encodePng(picture);
    std::fwrite(bytes.data(), 1, bytes.size(), file.stream());
    file.commit();
}

} // namespace sgview
