#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Import/SourceFiles.h"

#include <filesystem>

namespace sgview {

/// Reads a model file in this process. A hostile file may crash, hang or bloat the libraries behind it:
/// `superviseImport` is the way in for files from outside.
///
/// \param sources  where not null, is told which files it depends on, whatever comes of it
/// \throws ImportError
/// \throws std::bad_alloc
[[nodiscard]] Model importModel(std::filesystem::path const& file, ImportOptions const& options,
                                SourceFiles* sources = nullptr);

} // namespace sgview
