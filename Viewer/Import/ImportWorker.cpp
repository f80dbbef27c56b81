#include "Viewer/Import/ImportWorker.h"

#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/ModelStream.h"
#include "Viewer/Import/WorkerLimits.h"
#include "Viewer/Process/WorkerProcess.h"

#include <array>
#include <charconv>
#include <new>
#include <string_view>

#include <unistd.h>

namespace sgview {

namespace {

constexpr std::string_view workerArgument = "--import-worker";

// Positions in the arguments of a worker.
constexpr int memoryArgument = 2;
constexpr int secondsArgument = 3;
constexpr int sideArgument = 4;
constexpr int fileArgument = 5;

template <typename Number>
Number numberFrom(std::string_view text)
{
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void send(WorkerMark mark)
{
    std::array const byte{static_cast<std::uint8_t>(mark)};
    sendToParent(byte);
}

void sendBytes(std::span<std::uint8_t const> bytes)
{
    sendToParent(bytes);
}

void sendError(ImportFailure failure, std::string_view message, SourceFiles const& sources)
{
    send(WorkerMark::error);
    writeSources(sources, sendBytes);
    std::array const kind{static_cast<std::uint8_t>(failure)};
    sendToParent(kind);
    sendToParent(message);
    send(WorkerMark::end);
}

void work(std::filesystem::path const& file, ImportOptions const& options, ImportFunction const& import)
{
    SourceFiles sources;
    try {
        Model const model = import(file, options, &sources);
        send(WorkerMark::model);
        writeSources(sources, sendBytes);
        writeModel(model, sendBytes);
        send(WorkerMark::end);
    } catch (ImportError const& error) {
        sendError(error.failure(), error.what(), sources);
    } catch (std::bad_alloc const&) {
        sendError(ImportFailure::outOfMemory, {}, sources);
    } catch (std::exception const& error) {
        sendError(ImportFailure::broken, oneLine(file.string() + ": " + error.what()), sources);
    }
}

} // namespace

bool isImportWorker(int argc, char const* const* argv)
{
    return argc > fileArgument && argv[1] == workerArgument;
}

std::vector<std::string> workerArguments(std::filesystem::path const& file, ImportOptions const& options)
{
    std::vector<std::string> arguments{"sgview",
                                       std::string(workerArgument),
                                       std::to_string(options.limits.memory),
                                       std::to_string(options.limits.seconds),
                                       std::to_string(options.largestTextureSide),
                                       file.string()};
    for (std::filesystem::path const& folder : options.folders)
        arguments.push_back(folder.string());
    return arguments;
}

int importWorkerMain(int argc, char const* const* argv, ImportFunction const& import)
{
    if (!isImportWorker(argc, argv))
        return 2;
    ImportOptions options;
    options.limits.memory = numberFrom<std::uint64_t>(argv[memoryArgument]);
    options.limits.seconds = numberFrom<std::uint32_t>(argv[secondsArgument]);
    options.largestTextureSide = numberFrom<std::int32_t>(argv[sideArgument]);
    options.folders.assign(argv + fileArgument + 1, argv + argc);
    if (!takeOnLimits(options.limits, !memoryIsWatched))
        return 1;
    work(argv[fileArgument], options, import);
    // Destructors of libraries after a hostile file are one more risk, and nobody needs them.
    ::_exit(0);
}

} // namespace sgview
