#pragma once

#include "Utilities/FileLock.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace sgview {

/// What a run of the graphics diagnostic is at, or was at when it ended badly.
struct JournalEntry {
    std::string card; ///< vendor / renderer / version
    std::string step; ///< "timing the vertex program"
    std::string process;
    std::string time; ///< of the step's start, in UTC
    std::string
        end; ///< "was ended by signal 11 (Segmentation fault)"; empty while the run is on, or was cut off
};

/// A file beside the user's preferences that is there while a run is on, and stays where one did not end
/// well: also where the machine was reset. It is on the disk before a step begins.
class DiagnosticJournal {
public:
    explicit DiagnosticJournal(std::filesystem::path folder);

    /// That of the user; none where the environment names no folder for preferences.
    [[nodiscard]] static std::optional<DiagnosticJournal> usual();

    [[nodiscard]] std::filesystem::path const& file() const { return file_; }

    /// None where there is no journal, or nothing that reads as one.
    [[nodiscard]] std::optional<JournalEntry> read() const;

    /// \throws std::system_error
    void write(JournalEntry const& entry) const;

    void remove() const;

    /// Keeps others from runs of their own. Waits for theirs to end.
    /// \throws std::system_error  the folder cannot be written, or others took longer than `patience`
    [[nodiscard]] std::unique_ptr<FileLock> lock(std::chrono::milliseconds patience) const;

    /// Whether a run is on. Writes nothing.
    [[nodiscard]] bool isHeld() const;

private:
    std::filesystem::path file_;
};

/// An entry of now, by this process.
[[nodiscard]] JournalEntry makeEntry(std::string card, std::string step);

/// "was ended by signal 11 (Segmentation fault) while timing the vertex program".
[[nodiscard]] std::string inWords(JournalEntry const& entry);

} // namespace sgview
