#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Import/Importer.h"
#include "Viewer/Import/Model.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace sgview {

/// What a worker does: `importModel`, or what a test puts in its place.
using ImportFunction = std::function<Model(std::filesystem::path const&, ImportOptions const&, SourceFiles*)>;

/// Whether the program was started as an import worker; its main function asks before anything else.
[[nodiscard]] bool isImportWorker(int argc, char const* const* argv);

/// The main function of an import worker: takes on the limits it was given, imports the file, sends the model
/// or the error through the pipe that it was started with, and ends.
/// \return the process's exit status
int importWorkerMain(int argc, char const* const* argv, ImportFunction const& import = importModel);

/// The arguments that make a program an import worker, the program's own name first.
[[nodiscard]] std::vector<std::string> workerArguments(std::filesystem::path const& file,
                                                       ImportOptions const& options);

/// First byte of what a worker sends, before the files it came upon and the model or what went wrong; and its
/// last.
enum class WorkerMark : std::uint8_t { model = 'M', error = 'E', end = '.' };

/// Whether memory is watched from outside: the address sanitizer reserves far more than a limit on address
/// space would grant.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool memoryIsWatched = true;
#else
inline constexpr bool memoryIsWatched = false;
#endif

} // namespace sgview
