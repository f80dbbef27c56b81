#include "Viewer/Diagnosis/DiagnosticJournal.h"

#include "Utilities/DurableFile.h"
#include "Utilities/PrefsFile.h"
#include "Utilities/PrefsText.h"
#include "Viewer/Report/UtcTime.h"

#include <chrono>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace sgview {

namespace {

namespace fs = std::filesystem;

constexpr char const* fileName = "diagnostic-journal";
constexpr std::size_t longestFile = std::size_t{1} << 16;

fs::path lockFor(fs::path const& file)
{
    return file.string() + ".lock";
}

} // namespace

DiagnosticJournal::DiagnosticJournal(fs::path folder) : file_(std::move(folder) / fileName) {}

std::optional<DiagnosticJournal> DiagnosticJournal::usual()
{
    if (auto const folder = PrefsFile::usualFolder())
        return DiagnosticJournal(*folder);
    return std::nullopt;
}

std::optional<JournalEntry> DiagnosticJournal::read() const
{
    try {
        PrefsText::Entries entries = PrefsText::parse(DurableFile::read(file_, longestFile));
        if (!entries.contains("card") || !entries.contains("step"))
            return std::nullopt;
        return JournalEntry{entries["card"], entries["step"], entries["process"], entries["time"],
                            entries["end"]};
    } catch (std::system_error const&) {
        return std::nullopt;
    }
}

void DiagnosticJournal::write(JournalEntry const& entry) const
{
    DurableFile::makeFolder(file_.parent_path());
    DurableFile::write(file_, PrefsText::format({{"card", entry.card},
                                                 {"step", entry.step},
                                                 {"process", entry.process},
                                                 {"time", entry.time},
                                                 {"end", entry.end}}));
}

void DiagnosticJournal::remove() const
{
    std::error_code ignored;
    fs::remove(file_, ignored);
}

std::unique_ptr<FileLock> DiagnosticJournal::lock(std::chrono::milliseconds patience) const
{
    DurableFile::makeFolder(file_.parent_path());
    return std::make_unique<FileLock>(lockFor(file_), patience);
}

bool DiagnosticJournal::isHeld() const
{
    std::error_code ignored;
    if (!fs::exists(lockFor(file_), ignored))
        return false;
    try {
        FileLock const lock(lockFor(file_), std::chrono::milliseconds(0));
        return false;
    } catch (std::system_error const& error) {
        return error.code() == std::errc::operation_would_block;
    }
}

JournalEntry makeEntry(std::string card, std::string step)
{
    return {std::move(card),
            std::move(step),
            std::to_string(::getpid()),
            utcText(std::chrono::system_clock::now()),
            {}};
}

std::string inWords(JournalEntry const& entry)
{
    return (entry.end.empty() ? "was cut off" : entry.end) + " while " + entry.step;
}

} // namespace sgview
