#include "Viewer/Diagnosis/DiagnosticSupervisor.h"

#include "Utilities/Strings.h"
#include "Viewer/Diagnosis/DiagnosisLog.h"
#include "Viewer/Diagnosis/DiagnosticWorker.h"
#include "Viewer/Process/HeldSignals.h"
#include "Viewer/Process/WorkerProcess.h"

#include <cstring>
#include <span>
#include <system_error>

namespace sgview {

namespace {

using Clock = std::chrono::steady_clock;
using WorkerMessage::Kind;

/// A signal waits no longer than this.
constexpr std::chrono::milliseconds attention{50};

std::vector<std::string> lastLines(std::string const& text)
{
    constexpr std::size_t enough = 10;
    std::vector<std::string> lines;
    for (std::string const& line : string_split(text, '\n'))
        if (!line.empty())
            lines.push_back(line);
    if (lines.size() > enough)
        lines.erase(lines.begin(), lines.end() - enough);
    return lines;
}

/// One supervised run: the child's messages until it ends or must be ended.
class Supervision {
public:
    Supervision(DiagnosticOptions const& options, MeasuredCard const& card,
                DiagnosticListener const& listener)
        : options_(options), card_(card), listener_(listener)
    {
    }

    SupervisedDiagnosis run()
    {
        // First in and last out: a signal takes effect once the child is gone and the journal settled.
        HeldSignals const signals;
        SupervisedDiagnosis result;
        writeJournal({});
        try {
            WorkerProcess worker(diagnosticWorkerArguments(options_.module, options_.journal, card_),
                                 WorkerProcess::Errors::kept);
            result.end = follow(worker, signals);
            if (!result.endedWell())
                result.lastWords = lastLines(worker.errors());
        } catch (...) {
            removeJournal();
            throw;
        }
        result.diagnosis = log_.diagnosis();
        result.diagnosis.card = card_.name;
        result.step = log_.step();
        if (result.endedWell() || isInterruptedInTime(signals))
            removeJournal();
        else
            writeJournal(result.end);
        return result;
    }

private:
    /// \return how the child ended; empty where that was well
    std::string follow(WorkerProcess& worker, HeldSignals const& signals)
    {
        std::vector<std::uint8_t> received;
        bool open = true;
        while (!isInterrupted(signals)) {
            if (open) {
                WorkerProcess::Output const output = worker.read(received, attention);
                open = output != WorkerProcess::Output::ended;
                if (output == WorkerProcess::Output::some) {
                    if (!takeMessages(received))
                        return "was ended for sending nonsense";
                    continue;
                }
            } else if (auto const end = worker.waitUntil(Clock::now() + attention); end.known) {
                return inWords(end);
            }
            if (Clock::now() - lastSign_ > options_.timeLimit)
                return "was ended after " + std::to_string(options_.timeLimit.count()) +
                       " s without a sign of life";
        }
        return "was interrupted";
    }

    /// Takes whole messages off the front.
    bool takeMessages(std::vector<std::uint8_t>& received)
    {
        lastSign_ = Clock::now();
        std::span<std::uint8_t const> rest(received);
        while (rest.size() >= WorkerMessage::headBytes) {
            std::size_t size = 0;
            for (std::size_t i = WorkerMessage::headBytes - 1; i > 0; --i)
                size = (size << 8) | rest[i];
            if (size > WorkerMessage::mostBytes)
                return false;
            if (rest.size() < WorkerMessage::headBytes + size)
                break;
            take(static_cast<Kind>(rest[0]), rest.subspan(WorkerMessage::headBytes, size));
            rest = rest.subspan(WorkerMessage::headBytes + size);
        }
        received.erase(received.begin(), received.end() - static_cast<std::ptrdiff_t>(rest.size()));
        return true;
    }

    void take(Kind kind, std::span<std::uint8_t const> content)
    {
        std::string const text(content.begin(), content.end());
        switch (kind) {
        case Kind::card:
            log_.addCard(text);
            break;
        case Kind::line:
            takeLine(text);
            break;
        case Kind::picture:
            log_.addPicture(content);
            break;
        case Kind::failure:
            failure_ = text;
            break;
        case Kind::done:
            isDone_ = true;
            break;
        }
        listener_.step(log_.step());
    }

    void takeLine(std::string const& line)
    {
        constexpr std::string_view channel = "opengl: ";
        if (line.starts_with(channel))
            log_.addLine(std::string_view(line).substr(channel.size()));
        listener_.logLine(line);
    }

    [[nodiscard]] std::string inWords(WorkerProcess::End const& end) const
    {
        if (end.signal != 0)
            return "was ended by signal " + std::to_string(end.signal) + " (" + ::strsignal(end.signal) + ")";
        if (!failure_.empty())
            return "failed (" + failure_ + ")";
        if (end.status != 0 || !isDone_ || !log_.diagnosis().verdict)
            return "ended early with status " + std::to_string(end.status);
        return {};
    }

    [[nodiscard]] bool isInterrupted(HeldSignals const& signals) const
    {
        return options_.stop.stop_requested() || signals.anyWaits();
    }

    /// A person who ends what goes well says nothing against the card.
    [[nodiscard]] bool isInterruptedInTime(HeldSignals const& signals) const
    {
        constexpr std::chrono::seconds patience{5};
        return isInterrupted(signals) && Clock::now() - lastSign_ < patience;
    }

    /// A run is not given up for a journal that cannot be written.
    void writeJournal(std::string const& end) const
    {
        if (!options_.journal)
            return;
        JournalEntry entry = makeEntry(card_.name, log_.step());
        entry.end = end;
        try {
            options_.journal->write(entry);
        } catch (std::system_error const&) {
            return;
        }
    }

    void removeJournal() const
    {
        if (options_.journal)
            options_.journal->remove();
    }

    DiagnosticOptions const& options_;
    MeasuredCard const& card_;
    DiagnosticListener const& listener_;
    DiagnosisLog log_;
    Clock::time_point lastSign_ = Clock::now();
    std::string failure_;
    bool isDone_ = false;
};

} // namespace

std::string SupervisedDiagnosis::ending() const
{
    if (endedWell())
        return {};
    std::string text = "The run " + endInWords() + ".";
    for (std::string const& line : lastWords)
        text += " " + line;
    return text;
}

SupervisedDiagnosis superviseDiagnostic(DiagnosticOptions const& options, MeasuredCard const& card,
                                        DiagnosticListener const& listener)
{
    return Supervision(options, card, listener).run();
}

} // namespace sgview
