#pragma once

#include "Viewer/Import/GltfReader.h"

namespace sgview {

/// Reads any format that Assimp reads.
///
/// \param extension  of the format, lower case, without dot; the file's own name may have another
/// \throws ImportError
[[nodiscard]] ReadModel readWithAssimp(std::filesystem::path const& file, std::string const& extension,
                                       Bytes const& bytes, ImportOptions const& options, FileAccess& access,
                                       Warnings& warnings);

} // namespace sgview
