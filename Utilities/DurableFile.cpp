#include "Utilities/DurableFile.h"

#include "Utilities/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace {

namespace fs = std::filesystem;

constexpr mode_t ownFile = 0600;
constexpr mode_t ownFolder = 0700;

[[noreturn]] void fail(fs::path const& path, int error = errno)
{
    throw std::system_error(error, std::generic_category(), path.string());
}

/// Repeats a call of the operating system that a signal has interrupted.
template <typename Call>
auto uninterrupted(Call const& call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

FileDescriptor openFile(fs::path const& path, int flags)
{
    return FileDescriptor(uninterrupted([&] { return open(path.c_str(), flags | O_CLOEXEC, ownFile); }));
}

void flush(FileDescriptor const& file, fs::path const& path)
{
    if (uninterrupted([&] { return fsync(file.get()); }) != 0)
        fail(path);
}

void flushFolder(fs::path const& path)
{
    FileDescriptor const folder = openFile(path, O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen())
        fail(path);
    flush(folder, path);
}

void checkRegular(struct stat const& status, fs::path const& path)
{
    if (!S_ISREG(status.st_mode))
        throw std::system_error(EINVAL, std::generic_category(), path.string() + ": not a regular file");
}

std::size_t regularSize(FileDescriptor const& file, fs::path const& path)
{
    struct stat status {};
    if (fstat(file.get(), &status) != 0)
        fail(path);
    checkRegular(status, path);
    return static_cast<std::size_t>(status.st_size);
}

// What lies there may be meant to swallow what is written, as the null device does.
void checkReplaceable(fs::path const& path)
{
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0)
        checkRegular(status, path);
    else if (errno != ENOENT)
        fail(path);
}

void writeAll(FileDescriptor const& file, std::string_view text, fs::path const& path)
{
    while (!text.empty()) {
        auto const written = uninterrupted([&] { return ::write(file.get(), text.data(), text.size()); });
        if (written < 0)
            fail(path);
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void writeNew(fs::path const& path, std::string_view text)
{
    FileDescriptor const file = openFile(path, O_WRONLY | O_CREAT | O_EXCL);
    if (!file.isOpen())
        fail(path);
    writeAll(file, text, path);
    flush(file, path);
}

} // namespace

fs::path DurableFile::followLinks(fs::path path)
{
    constexpr int longestChain = 40;
    for (int links = 0; links < longestChain; ++links) {
        std::error_code error;
        if (!fs::is_symlink(fs::symlink_status(path, error)))
            return path;
        path = path.parent_path() / fs::read_symlink(path);
    }
    fail(path, ELOOP);
}

std::string DurableFile::read(fs::path const& path, std::size_t limit)
{
    // A pipe without a writer must not hang the process.
    FileDescriptor const file = openFile(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file.isOpen() && errno == ENOENT)
        return {};
    if (!file.isOpen())
        fail(path);
    if (regularSize(file, path) > limit)
        return {};

    std::string text(limit + 1, '\0');
    std::size_t size = 0;
    while (size < text.size()) {
        auto const got =
            uninterrupted([&] { return ::read(file.get(), text.data() + size, text.size() - size); });
        if (got < 0)
            fail(path);
        if (got == 0)
            break;
        size += static_cast<std::size_t>(got);
    }
    text.resize(size > limit ? 0 : size);
    return text;
}

void DurableFile::write(fs::path const& path, std::string_view text)
{
    checkReplaceable(path);
    fs::path const temporary = path.string() + ".new";
    // One may be left from a process that was stopped.
    if (unlink(temporary.c_str()) != 0 && errno != ENOENT)
        fail(temporary);
    try {
        writeNew(temporary, text);
        if (std::rename(temporary.c_str(), path.c_str()) != 0)
            fail(path);
    } catch (...) {
        unlink(temporary.c_str());
        throw;
    }
    flushFolder(path.parent_path());
}

void DurableFile::makeFolder(fs::path const& folder)
{
    if (mkdir(folder.c_str(), ownFolder) == 0)
        return flushFolder(folder.parent_path());
    if (errno == EEXIST)
        return;
    if (errno != ENOENT || !folder.has_relative_path())
        fail(folder);
    makeFolder(folder.parent_path());
    if (mkdir(folder.c_str(), ownFolder) != 0 && errno != EEXIST)
        fail(folder);
    flushFolder(folder.parent_path());
}
