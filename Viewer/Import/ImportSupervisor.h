#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Import/Model.h"

#include <filesystem>

namespace sgview {

/// Imports a model file in a child process with limits, so that no file can crash, hang or bloat this one.
/// The child is this same program, started anew: its main function must ask `isImportWorker` first. Whatever
/// comes back is checked again.
///
/// No process and no descriptor is left when this returns. Safe to call from any thread.
/// \throws ImportError  also for what became of the child: crashed, out of memory, timed out, too big
[[nodiscard]] Model superviseImport(std::filesystem::path const& file, ImportOptions const& options);

} // namespace sgview
