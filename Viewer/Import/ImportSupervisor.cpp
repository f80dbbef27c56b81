#include "Viewer/Import/ImportSupervisor.h"

#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/ImportWorker.h"
#include "Viewer/Import/ModelCheck.h"
#include "Viewer/Import/ModelStream.h"
#include "Viewer/Process/WorkerProcess.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <system_error>

namespace sgview {

namespace {

using Clock = std::chrono::steady_clock;

std::string inMebibytes(std::uint64_t bytes)
{
    return std::to_string(bytes >> 20) + " MiB";
}

constexpr char const* moreMemory = "; --memory-limit grants more";

/// One supervised import: the child's output until it ends or must be ended.
class Supervision {
public:
    Supervision(std::filesystem::path const& file, ImportOptions const& options, ImportWatch const& watch)
        : file_(file.string()),
          watch_(watch),
          limits_(options.limits),
          worker_(workerArguments(file, options)),
          deadline_(Clock::now() + std::chrono::seconds(options.limits.seconds))
    {
    }

    Model run()
    {
        receive();
        WorkerProcess::End const end = worker_.waitUntil(deadline_);
        bool const wentWell = end.known && end.signal == 0 && end.status == 0;
        if (wentWell && isComplete())
            return evaluate();
        throw whyIncomplete(end);
    }

private:
    [[nodiscard]] ImportError fail(ImportFailure failure, std::string const& reason) const
    {
        return {failure, file_, reason};
    }
    [[nodiscard]] ImportError nonsense() const
    {
        return fail(ImportFailure::crashed, "the importer sent nonsense");
    }
    [[nodiscard]] ImportError timedOut() const
    {
        return fail(ImportFailure::timedOut, "the importer took longer than " +
                                                 std::to_string(limits_.seconds) +
                                                 " s; --time-limit grants more");
    }
    [[nodiscard]] ImportError outOfMemory() const
    {
        return fail(ImportFailure::outOfMemory,
                    "the importer needed more memory than " + inMebibytes(limits_.memory) + moreMemory);
    }

    void receive()
    {
        constexpr std::chrono::milliseconds watchInterval{50};
        constexpr std::uint64_t sanitizerOverhead = 3; // shadow memory, red zones and quarantine
        while (true) {
            auto const left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now());
            if (left.count() <= 0)
                throw timedOut();
            if (watch_.stop.stop_requested())
                throw fail(ImportFailure::cancelled, "loading was cancelled");
            bool const isWatched = memoryIsWatched || watch_.stop.stop_possible();
            auto const wait = isWatched ? std::min(left, watchInterval) : left;
            WorkerProcess::Output const output = worker_.read(received_, wait);
            if (output == WorkerProcess::Output::ended)
                return;
            if (watch_.received)
                *watch_.received = received_.size();
            if (received_.size() > limits_.memory)
                throw fail(ImportFailure::tooBig,
                           "the model is larger than " + inMebibytes(limits_.memory) + moreMemory);
            if (memoryIsWatched && worker_.residentMemory() > sanitizerOverhead * limits_.memory)
                throw outOfMemory();
        }
    }

    [[nodiscard]] bool isComplete() const
    {
        return received_.size() >= 2 && received_.back() == static_cast<std::uint8_t>(WorkerMark::end);
    }

    Model evaluate()
    {
        std::span<std::uint8_t const> content(received_.data() + 1, received_.size() - 2);
        bool const isModel = received_.front() == static_cast<std::uint8_t>(WorkerMark::model);
        bool const isError = received_.front() == static_cast<std::uint8_t>(WorkerMark::error);
        if (!isModel && !isError)
            throw nonsense();
        SourceFiles sources = readSources(content);
        if (watch_.sources)
            *watch_.sources = std::move(sources);
        if (isModel) {
            Model model = readModel(content);
            checkModel(model, file_);
            return model;
        }
        if (content.empty() || content[0] > static_cast<std::uint8_t>(ImportFailure::timedOut))
            throw nonsense();
        auto const failure = static_cast<ImportFailure>(content[0]);
        if (failure == ImportFailure::outOfMemory)
            throw outOfMemory();
        throw ImportError(failure, std::string(content.begin() + 1, content.end()));
    }

    [[nodiscard]] ImportError whyIncomplete(WorkerProcess::End const& end) const
    {
        if (!end.known || end.signal == SIGXCPU)
            return timedOut();
        if (end.signal == SIGXFSZ)
            return fail(ImportFailure::crashed, "the importer tried to write a file");
        if (end.signal != 0)
            return fail(ImportFailure::crashed, "the importer was ended by signal " +
                                                    std::to_string(end.signal) + " (" +
                                                    ::strsignal(end.signal) + ")");
        return fail(ImportFailure::crashed,
                    "the importer ended early with status " + std::to_string(end.status));
    }

    std::string file_;
    ImportWatch watch_;
    ImportLimits limits_;
    WorkerProcess worker_;
    Clock::time_point deadline_;
    std::vector<std::uint8_t> received_;
};

} // namespace

Model superviseImport(std::filesystem::path const& file, ImportOptions const& options,
                      ImportWatch const& watch)
{
    try {
        return Supervision(file, options, watch).run();
    } catch (std::system_error const& error) {
        throw ImportError(ImportFailure::crashed, file.string(), error.what());
    }
}

} // namespace sgview
