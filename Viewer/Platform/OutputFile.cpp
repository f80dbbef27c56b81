#include "Viewer/Platform/OutputFile.h"

#include "Utilities/DurableFile.h"

#include <boost/lexical_cast/try_lexical_convert.hpp>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>
#include <optional>
#include <system_error>
#include <utility>

namespace sgview {

namespace {

namespace fs = std::filesystem;

fs::path temporaryBeside(fs::path const& path)
{
    constexpr std::size_t most = 200; // of the 255 bytes that a name may have
    return path.parent_path() /
           ("." + path.filename().string().substr(0, most) + "." + std::to_string(::getpid()) + ".tmp");
}

fs::path folderOf(fs::path const& path)
{
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

std::string openFileName(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

/// A file without a name in the folder of another; -1 where the system knows none. It goes with the process,
/// whatever ends that.
int openUnnamedBeside(fs::path const& path)
{
    int const descriptor = ::open(folderOf(path).c_str(), O_WRONLY | O_CLOEXEC | O_TMPFILE, 0666);
    if (descriptor < 0 || ::access(openFileName(descriptor).c_str(), F_OK) == 0)
        return descriptor;
    ::close(descriptor); // no path by which to give it a name
    return -1;
}

/// The number of the open file that a path such as /dev/fd/3 stands for.
std::optional<int> openFileOf(fs::path path)
{
    constexpr int longestChain = 40;
    if (isStandardOutput(path))
        return STDOUT_FILENO;
    std::error_code error;
    fs::path const openFiles = fs::canonical("/proc/self/fd", error);
    for (int links = 0; links < longestChain && !error; ++links) {
        if (fs::canonical(fs::absolute(path).parent_path(), error) == openFiles) {
            int number = -1;
            return boost::conversion::try_lexical_convert(path.filename().string(), number)
                       ? std::optional(number)
                       : std::nullopt;
        }
        if (!fs::is_symlink(fs::symlink_status(path, error)))
            break;
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return std::nullopt;
}

} // namespace

OutputFile::OutputFile(fs::path path) : path_(std::move(path))
{
    // Where it stands, appended or not, is the business of whoever opened it.
    if (std::optional<int> const number = openFileOf(path_)) {
        open(::fcntl(*number, F_DUPFD_CLOEXEC, 0));
        return;
    }
    try {
        path_ = DurableFile::followLinks(path_);
    } catch (std::system_error const& error) {
        fail(error.code().value());
    }
    std::error_code ignored;
    fs::file_status const status = fs::status(path_, ignored);
    if (fs::is_directory(status))
        fail(EISDIR);
    // Renaming would replace a file that its owner has protected.
    if (fs::exists(status) && ::access(path_.c_str(), W_OK) != 0)
        fail(errno);
    bool const asItIs = fs::exists(status) && !fs::is_regular_file(status);
    if (asItIs)
        open(::open(path_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    else
        openTemporary();
}

OutputFile::~OutputFile()
{
    if (stream_)
        std::fclose(stream_);
    if (!temporary_.empty())
        ::unlink(temporary_.c_str());
}

void OutputFile::commit()
{
    bool const failedBefore = std::ferror(stream_) != 0;
    int const earlier = errno;
    if (isUnnamed_ && !failedBefore)
        giveTemporaryName();
    int const closed = std::fclose(std::exchange(stream_, nullptr));
    if (failedBefore || closed != 0)
        fail(closed != 0 ? errno : earlier);
    if (!temporary_.empty() && std::rename(temporary_.c_str(), path_.c_str()) != 0)
        fail(errno);
    temporary_.clear();
}

void OutputFile::openTemporary()
{
    int const unnamed = openUnnamedBeside(path_);
    isUnnamed_ = unnamed >= 0;
    if (isUnnamed_) {
        open(unnamed);
        return;
    }
    temporary_ = temporaryBeside(path_);
    open(::open(temporary_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_CREAT | O_TRUNC | O_NOFOLLOW, 0666));
}

/// A link cannot replace the file under the last name; renaming can.
void OutputFile::giveTemporaryName()
{
    fs::path const name = temporaryBeside(path_);
    ::unlink(name.c_str());
    if (::linkat(AT_FDCWD, openFileName(::fileno(stream_)).c_str(), AT_FDCWD, name.c_str(),
                 AT_SYMLINK_FOLLOW) != 0)
        fail(errno);
    temporary_ = name;
}

void OutputFile::open(int descriptor)
{
    if (descriptor < 0)
        fail(errno);
    stream_ = ::fdopen(descriptor, "wb");
    if (!stream_) {
        int const error = errno;
        ::close(descriptor);
        fail(error);
    }
}

void OutputFile::fail(int error) const
{
    failToWrite(path_.string(), error);
}

void failToWrite(std::string const& name, int error)
{
    std::string const message =
        name + ": " + (error == ENOENT ? "there is no such folder" : std::generic_category().message(error));
    if (error == EPIPE)
        throw ReaderGone(message);
    throw OutputError(message);
}

bool isStandardOutput(fs::path const& path)
{
    return path == "-" || path == "/dev/stdout";
}

void flushStandardOutput()
{
    if (std::cout.flush())
        return;
    // The stream keeps no reason. At a pipe's end for writing the system sets this where no reader is left.
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    if (::poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0)
        throw ReaderGone("standard output: nobody reads it any more");
    throw OutputError("standard output cannot be written");
}

void writeFile(std::filesystem::path const& path, std::string_view text)
{
    OutputFile file(path);
    std::fwrite(text.data(), 1, text.size(), file.stream());
    file.commit();
}

} // namespace sgview
