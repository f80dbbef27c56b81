#pragma once

#include "Viewer/Platform/Picture.h"

#include <filesystem>

namespace sgview {

/// Writes a picture as a PNG file of 8 bits a colour, without opacity. Equal pictures give equal files.
/// \throws OutputError  and then leaves the file as it was
void writePng(std::filesystem::path const& path, Picture const& picture);

} // namespace sgview
