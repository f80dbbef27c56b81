#include "Viewer/Platform/OutputFile.h"

#include "Utilities/DurableFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

namespace sgview {

namespace {

namespace fs = std::filesystem;

fs::path temporaryBeside(fs::path const& path)
{
    return path.parent_path() / ("." + path.filename().string() + "." + std::to_string(::getpid()) + ".tmp");
}

} // namespace

OutputFile::OutputFile(fs::path path) : path_(std::move(path))
{
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
    if (!asItIs)
        temporary_ = temporaryBeside(path_);
    int const flags = O_WRONLY | O_CLOEXEC | O_NOCTTY | (asItIs ? 0 : O_CREAT | O_TRUNC | O_NOFOLLOW);
    int const descriptor = ::open(asItIs ? path_.c_str() : temporary_.c_str(), flags, 0666);
    if (descriptor < 0)
        fail(errno);
    stream_ = ::fdopen(descriptor, "wb");
    if (!stream_)
        throw std::bad_alloc();
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
    int const closed = std::fclose(std::exchange(stream_, nullptr));
    if (failedBefore || closed != 0)
        fail(closed != 0 ? errno : earlier);
    if (!temporary_.empty() && std::rename(temporary_.c_str(), path_.c_str()) != 0)
        fail(errno);
    temporary_.clear();
}

void OutputFile::fail(int error) const
{
    throw OutputError(path_.string() + ": " + std::generic_category().message(error));
}

void writeFile(std::filesystem::path const& path, std::string_view text)
{
    OutputFile file(path);
    std::fwrite(text.data(), 1, text.size(), file.stream());
    file.commit();
}

} // namespace sgview
