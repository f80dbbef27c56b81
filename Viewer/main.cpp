#include "Viewer/CommandLine/CommandLine.h"
#include "Viewer/CommandLine/Messages.h"
#include "Viewer/CommandLine/UsageError.h"
#include "Viewer/Commands/Commands.h"
#include "Viewer/Diagnosis/DiagnosticWorker.h"
#include "Viewer/Import/ImportWorker.h"
#include "Viewer/Platform/OutputFile.h"

#include <csignal>
#include <exception>
#include <new>
#include <optional>

#include <fcntl.h>
#include <unistd.h>

namespace {

enum ExitStatus : int { done = 0, failed = 1, badUsage = 2 };

/// A standard stream that was closed before would be the next file that is opened, and words for people would
/// go into that. Writing to what stands there now fails, as it would without.
void occupyClosedStreams()
{
    int opened = STDIN_FILENO;
    while (opened >= 0 && opened <= STDERR_FILENO)
        opened = ::open("/dev/null", O_RDONLY);
    if (opened > STDERR_FILENO)
        ::close(opened);
}

/// As a program ends that knows nothing of the signal: without a word, which "sgview info FILE | head" wants.
/// Whoever has the signal ignored is told by an exit status.
void endForWantOfAReader(void (*whenReaderGoes)(int))
{
    std::signal(SIGPIPE, whenReaderGoes);
    std::raise(SIGPIPE);
}

void runAsAsked(int argc, char const* const* argv)
{
    std::optional<sgview::CommandLine> const line = sgview::parseCommandLine(argc, argv);
    if (!line)
        return;
    sgview::Messages const messages(line->messages);
    std::visit([&messages](auto const& request) { sgview::run(request, messages); }, line->request);
}

} // namespace

int main(int argc, char** argv)
{
    occupyClosedStreams();
    if (sgview::isImportWorker(argc, argv))
        return sgview::importWorkerMain(argc, argv);
    if (sgview::isDiagnosticWorker(argc, argv))
        return sgview::diagnosticWorkerMain(argc, argv);

    // A file that may grow no further is an error like any other. At a pipe that nobody reads, what is half
    // done is cleared away first.
    std::signal(SIGXFSZ, SIG_IGN);
    auto* const whenReaderGoes = std::signal(SIGPIPE, SIG_IGN);
    try {
        runAsAsked(argc, argv);
        return done;
    } catch (sgview::ReaderGone const& gone) {
        endForWantOfAReader(whenReaderGoes);
        sgview::printError(gone.what());
    } catch (sgview::UsageError const& error) {
        sgview::printError(error.what());
        return badUsage;
    } catch (std::bad_alloc const&) {
        sgview::printError("out of memory");
    } catch (std::exception const& error) {
        sgview::printError(error.what());
    } catch (...) {
        sgview::printError("unknown failure");
    }
    return failed;
}
