#include "Viewer/Commands/Commands.h"

#include "SceneGraph/SGRendererModule.h"
#include "Viewer/CommandLine/UsageError.h"
#include "Viewer/Commands/DeviceChoice.h"
#include "Viewer/Commands/RenderOutcome.h"
#include "Viewer/Commands/RenderSession.h"
#include "Viewer/Platform/OutputFile.h"

#include <chrono>
#include <iostream>

#include <unistd.h>

namespace sgview {

namespace {

/// Models that could not be drawn, each of which has been told of.
class RenderFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

void checkStandardOutput(RenderRequest const& request)
{
    if (request.output->isStandardOutput() && ::isatty(STDOUT_FILENO) != 0)
        throw UsageError("--output: standard output is a terminal, which shows no pictures; lead it into a "
                         "file or a pipe");
}

/// What leaves the other models nothing to be drawn by goes on upwards.
RenderOutcome drawModel(RenderSession& session, PictureSubject const& subject)
{
    using Clock = std::chrono::steady_clock;
    Clock::time_point const start = Clock::now();
    RenderOutcome outcome;
    outcome.model = subject.model;
    try {
        session.draw(subject, outcome);
    } catch (ContextError const&) {
        throw;
    } catch (SGModuleError const&) {
        throw;
    } catch (TechniqueError const&) {
        throw;
    } catch (std::exception const&) {
        outcome.error = std::current_exception();
    }
    outcome.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return outcome;
}

} // namespace

void run(RenderRequest const& request, Messages const& messages)
{
    if (!chooseDevice(request.picture.device))
        return;
    checkStandardOutput(request);

    RenderSession session(request, messages);
    std::size_t const count = request.files.size();
    std::size_t failures = 0;
    for (std::size_t i = 0; i < count; ++i) {
        RenderOutcome const outcome = drawModel(session, {request.files[i], i + 1, 0});
        if (request.json) {
            writeJsonLine(std::cout, outcome);
            flushStandardOutput();
        }
        if (outcome.error && count == 1)
            std::rethrow_exception(outcome.error);
        if (outcome.error)
            printError(errorLine(outcome));
        failures += outcome.error ? 1 : 0;
    }
    if (failures != 0)
        throw RenderFailure(std::to_string(failures) + " of " + std::to_string(count) +
                            " models could not be drawn");
}

} // namespace sgview
