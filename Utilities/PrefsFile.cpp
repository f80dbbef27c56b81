#include "Utilities/PrefsFile.h"

#include "Utilities/DurableFile.h"
#include "Utilities/FileLock.h"
#include "Utilities/Log.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;

constexpr char const* folderName = "OpenGLRenderer";
constexpr char const* fileName = "preferences";
constexpr std::size_t longestFile = std::size_t{1} << 20;

PrefsText::Entries readEntries(fs::path const& file)
{
    return PrefsText::parse(DurableFile::read(file, longestFile));
}

PrefsText::Entries merged(PrefsText::Entries entries, PrefsText::Entries const& changes)
{
    for (auto const& [key, value] : changes) {
        if (value.empty())
            entries.erase(key);
        else
            entries[key] = value;
    }
    return entries;
}

void writeEntries(fs::path const& file, PrefsText::Entries const& entries)
{
    std::string const text = PrefsText::format(entries);
    if (text.size() > longestFile)
        throw std::system_error(EFBIG, std::generic_category(), file.string());
    DurableFile::write(file, text);
}

std::optional<fs::path> absoluteFolder(char const* variable)
{
    char const* const value = std::getenv(variable);
    if (!value || !fs::path(value).is_absolute())
        return {};
    return fs::path(value);
}

} // namespace

PrefsFile::PrefsFile(fs::path const& folder) : path_(fs::absolute(folder) / fileName)
{
    try {
        stored_ = readEntries(path_);
    } catch (std::system_error const&) {
        stored_.clear();
    }
}

std::optional<fs::path> PrefsFile::usualFolder()
{
    if (auto const configuration = absoluteFolder("XDG_CONFIG_HOME"))
        return *configuration / folderName;
    if (auto const home = absoluteFolder("HOME"))
        return *home / ".config" / folderName;
    return {};
}

std::string PrefsFile::getString(std::string const& key) const
{
    for (auto const* entries : {&pending_, &stored_})
        if (auto const found = entries->find(key); found != entries->end())
            return found->second;
    return {};
}

void PrefsFile::setString(std::string const& key, std::string const& value)
{
    pending_[key] = value;
    if (pendingBefore_.empty())
        save();
}

void PrefsFile::beginBatch()
{
    pendingBefore_.push_back(pending_);
}

void PrefsFile::endBatch(bool committed)
{
    if (!committed)
        pending_.swap(pendingBefore_.back());
    pendingBefore_.pop_back();
    if (committed && pendingBefore_.empty())
        save();
}

void PrefsFile::save()
{
    try {
        savePending();
        pending_.clear();
        failureLogged_ = false;
    } catch (std::system_error const& error) {
        logFailure(error.what());
    }
}

void PrefsFile::savePending()
{
    stored_ = readEntries(path_);
    if (merged(stored_, pending_) == stored_)
        return;

    DurableFile::makeFolder(path_.parent_path());
    fs::path const file = DurableFile::followLinks(path_);
    FileLock const lock(file.string() + ".lock");
    PrefsText::Entries entries = merged(readEntries(file), pending_);
    writeEntries(file, entries);
    stored_ = std::move(entries);
}

void PrefsFile::logFailure(std::string const& reason)
{
    static LogChannel const errors("error");
    if (!std::exchange(failureLogged_, true))
        errors.write("Preferences not saved: ", reason);
}
