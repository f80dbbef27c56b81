#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Import/Model.h"

#include <filesystem>

namespace sgview {

/// Reads a model file in this process. A hostile file may crash, hang or bloat the libraries behind it:
/// `superviseImport` is the way in for files from outside.
///
/// \throws ImportError
/// \throws std::bad_alloc
[[nodiscard]] Model importModel(std::filesystem::path const& file, ImportOptions const& options);

} // namespace sgview
