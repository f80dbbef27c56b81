#include "Viewer/Diagnosis/DiagnosticGate.h"

#include "Viewer/Diagnosis/DiagnosticSupervisor.h"

#include <system_error>

namespace sgview {

std::unique_ptr<FileLock> lockOut(std::optional<DiagnosticJournal>& journal, std::stop_token const& stop)
{
    if (!journal)
        return nullptr;
    constexpr std::chrono::milliseconds attention{50};
    auto const deadline = std::chrono::steady_clock::now() + DiagnosticOptions::usualTimeLimit;
    while (true) {
        try {
            return journal->lock(attention);
        } catch (std::system_error const& error) {
            if (error.code() != std::errc::operation_would_block) {
                journal.reset();
                return nullptr;
            }
            if (stop.stop_requested() || std::chrono::steady_clock::now() >= deadline)
                throw DiagnosticBusy();
        }
    }
}

std::optional<JournalEntry> lastDeadRun(std::optional<DiagnosticJournal> const& journal, FileLock const* lock)
{
    std::optional<JournalEntry> entry = journal ? journal->read() : std::nullopt;
    if (!entry || (entry->end.empty() && !lock && journal->isHeld()))
        return std::nullopt;
    return entry;
}

std::optional<JournalEntry> deadRunOn(std::string const& card,
                                      std::optional<DiagnosticJournal> const& journal, FileLock const* lock)
{
    std::optional<JournalEntry> entry = lastDeadRun(journal, lock);
    return entry && entry->card == card ? entry : std::nullopt;
}

} // namespace sgview
