#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Import/SourceFiles.h"

#include <filesystem>

namespace sgview {

/// Stands in for `importModel` in a worker: files named "crash.bad", "hang.bad" and so on make it behave as a
/// hostile file would make a library behave; any other file is imported.
[[nodiscard]] Model importOrMisbehave(std::filesystem::path const& file, ImportOptions const& options,
                                      SourceFiles* sources);

} // namespace sgview
