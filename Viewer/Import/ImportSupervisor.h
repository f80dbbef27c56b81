#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Import/SourceFiles.h"

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stop_token>

namespace sgview {

/// How an import is watched and, by another thread, stopped.
struct ImportWatch {
    std::stop_token stop;
    std::atomic<std::uint64_t>* received = nullptr; ///< bytes of the model so far, counted up where not null
    /// The files that it depends on, where not null and where that came to be known, even if no model did.
    std::optional<SourceFiles>* sources = nullptr;
};

/// Imports a model file in a child process with limits, so that no file can crash, hang or bloat this one.
/// The child is this same program, started anew: its main function must ask `isImportWorker` first. Whatever
/// comes back is checked again.
///
/// No process and no descriptor is left when this returns. Safe to call from any thread.
/// \throws ImportError  also for what became of the child: crashed, out of memory, timed out, too big, cancelled
[[nodiscard]] Model superviseImport(std::filesystem::path const& file, ImportOptions const& options,
                                    ImportWatch const& watch = {});

} // namespace sgview
