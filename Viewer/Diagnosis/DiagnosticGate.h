#pragma once

#include "Viewer/Diagnosis/DiagnosticJournal.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <stop_token>
#include <string>

namespace sgview {

// Who may run the graphics diagnostic, and whether anyone should.

inline constexpr char const* waitingForOthers = "waiting for another sgview that measures the graphics card";

/// Another sgview measures the card, and does not come to an end.
class DiagnosticBusy : public std::runtime_error {
public:
    DiagnosticBusy() : std::runtime_error("another sgview has been measuring the graphics card for long") {}
};

/// The lock of a journal; none where the folder cannot be written, and then neither can the journal. Waits
/// for others no longer than a run may go without a sign of life, and not beyond `stop`. They may have stored
/// a verdict meanwhile.
/// \throws DiagnosticBusy
[[nodiscard]] std::unique_ptr<FileLock> lockOut(std::optional<DiagnosticJournal>& journal,
                                                std::stop_token const& stop = {});

/// What a journal says of the last run that died; none where it says nothing, or of a run that is on.
/// \param lock  of the journal, where it is this process that has it
[[nodiscard]] std::optional<JournalEntry> lastDeadRun(std::optional<DiagnosticJournal> const& journal,
                                                      FileLock const* lock = nullptr);

/// The same, if it was on a card.
[[nodiscard]] std::optional<JournalEntry> deadRunOn(std::string const& card,
                                                    std::optional<DiagnosticJournal> const& journal,
                                                    FileLock const* lock = nullptr);

} // namespace sgview
