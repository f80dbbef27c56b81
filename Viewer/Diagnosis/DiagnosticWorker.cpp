#include "Viewer/Diagnosis/DiagnosticWorker.h"

#include "SceneGraph/SGRendererModule.h"
#include "Utilities/Log.h"
#include "Viewer/Diagnosis/DiagnosisLog.h"
#include "Viewer/Platform/HostState.h"
#include "Viewer/Process/WorkerProcess.h"

#include <sys/resource.h>

#include <array>
#include <functional>
#include <iostream>
#include <memory>
#include <streambuf>
#include <string_view>
#include <system_error>
#include <utility>

namespace sgview {

namespace {

using WorkerMessage::Kind;

constexpr std::string_view workerArgument = "--diagnostic-worker";
constexpr std::string_view channel = "opengl: ";

// Positions in the arguments of a worker. A path that is not given is an empty one.
constexpr int journalArgument = 2;
constexpr int moduleArgument = 3;
constexpr int cardArgument = 4;
constexpr int videoDriverArgument = 5;
constexpr int argumentCount = 6;

void send(Kind kind, std::span<std::uint8_t const> content)
{
    std::array<std::uint8_t, WorkerMessage::headBytes> head{static_cast<std::uint8_t>(kind)};
    for (std::size_t i = 1; i < head.size(); ++i)
        head[i] = static_cast<std::uint8_t>(content.size() >> (8 * (i - 1)));
    sendToParent(head);
    sendToParent(content);
}

void send(Kind kind, std::string_view content)
{
    send(kind, {reinterpret_cast<std::uint8_t const*>(content.data()), content.size()});
}

/// Hands on what is written to it, line by line.
class LineBuffer : public std::streambuf {
public:
    explicit LineBuffer(std::function<void(std::string_view)> take) : take_(std::move(take)) {}

protected:
    int_type overflow(int_type character) override
    {
        if (traits_type::eq_int_type(character, traits_type::eof()))
            return traits_type::not_eof(character);
        if (character != '\n')
            line_ += traits_type::to_char_type(character);
        else
            take_(std::exchange(line_, {}));
        return character;
    }

private:
    std::function<void(std::string_view)> take_;
    std::string line_;
};

/// Tells the parent and the journal how far the run is.
class Reporter {
public:
    explicit Reporter(std::optional<DiagnosticJournal> journal) : journal_(std::move(journal)) {}

    void tellCard(std::string const& card)
    {
        send(Kind::card, card);
        log_.addCard(card);
        writeStep();
    }

    void tellLine(std::string_view line)
    {
        send(Kind::line, line);
        if (!line.starts_with(channel))
            return;
        log_.addLine(line.substr(channel.size()));
        writeStep();
    }

    void showPicture(std::span<std::uint8_t const> pixels)
    {
        send(Kind::picture, pixels);
        log_.addPicture(pixels);
    }

private:
    /// A run is not given up for a journal that cannot be written.
    void writeStep()
    {
        std::string const step = log_.step();
        if (!journal_ || step == step_)
            return;
        step_ = step;
        try {
            journal_->write(makeEntry(log_.diagnosis().card, step));
        } catch (std::system_error const&) {
            journal_.reset();
        }
    }

    std::optional<DiagnosticJournal> journal_;
    DiagnosisLog log_;
    std::string step_;
};

void carryOut(std::optional<std::filesystem::path> const& module, MeasuredCard const& card,
              Reporter& reporter)
{
    std::unique_ptr<HeadlessContext> const context = openContextOf(card);
    reporter.tellCard(card.name);
    SGRendererModule const renderer(module);
    renderer.renderer().diagnosticImageSink = [&reporter](std::span<unsigned char const> pixels) {
        reporter.showPicture(pixels);
    };
    setHostState();
    renderer.renderer().runDiagnostic();
    renderer.renderer().diagnosticImageSink = nullptr;
}

std::optional<std::filesystem::path> pathIn(char const* argument)
{
    if (*argument == '\0')
        return std::nullopt;
    return argument;
}

/// What crashes here is reported, which is enough.
void leaveNoCore()
{
    rlimit const none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
}

} // namespace

bool isDiagnosticWorker(int argc, char const* const* argv)
{
    return argc == argumentCount && argv[1] == workerArgument;
}

std::vector<std::string> diagnosticWorkerArguments(std::optional<std::filesystem::path> const& module,
                                                   std::optional<DiagnosticJournal> const& journal,
                                                   MeasuredCard const& card)
{
    return {"sgview",
            std::string(workerArgument),
            journal ? journal->file().parent_path().string() : "",
            module ? module->string() : "",
            card.name,
            card.videoDriver};
}

int diagnosticWorkerMain(int argc, char const* const* argv)
{
    if (!isDiagnosticWorker(argc, argv))
        return 2;
    leaveNoCore();
    std::optional<DiagnosticJournal> journal;
    if (auto const folder = pathIn(argv[journalArgument]))
        journal.emplace(*folder);
    Reporter reporter(std::move(journal));
    LineBuffer lines([&reporter](std::string_view line) { reporter.tellLine(line); });
    std::ostream stream(&lines);
    Log& log = Log::getInstance();
    log.setStream(stream);
    log.setEnabled("opengl", true);
    log.setEnabled("error", true);
    int status = 0;
    try {
        carryOut(pathIn(argv[moduleArgument]), {argv[cardArgument], argv[videoDriverArgument]}, reporter);
        send(Kind::done, std::string_view());
    } catch (std::exception const& error) {
        send(Kind::failure, error.what());
        status = 1;
    }
    log.setStream(std::cerr);
    return status;
}

} // namespace sgview
