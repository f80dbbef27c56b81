#pragma once

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string_view>

namespace sgview {

/// A result that could not be written. what() is one line: file and reason.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A pipe that nobody reads any more.
class ReaderGone : public OutputError {
public:
    using OutputError::OutputError;
};

/// A file that appears under its name only once it is whole: until then it has no name, or a temporary one in
/// the same folder where the file system knows no files without. A device or a pipe is written to as it is,
/// and so is what the process has open already: "-" is standard output, and /dev/fd/3 what it says.
class OutputFile {
public:
    /// \throws OutputError
    explicit OutputFile(std::filesystem::path path);
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;

    /// Leaves nothing behind unless committed.
    ~OutputFile();

    /// Errors while writing are kept by the stream and found by commit().
    [[nodiscard]] std::FILE* stream() const { return stream_; }

    /// Ends the file and gives it its name.
    /// \throws OutputError
    void commit();

    /// Throws an OutputError for an error number of the system, a ReaderGone where that is EPIPE.
    [[noreturn]] void fail(int error) const;

private:
    void openTemporary();
    void giveTemporaryName();
    void open(int descriptor);

    std::filesystem::path path_;
    std::filesystem::path temporary_; ///< empty while there is none
    bool isUnnamed_ = false;
    std::FILE* stream_ = nullptr;
};

/// Whether a file's name stands for standard output.
[[nodiscard]] bool isStandardOutput(std::filesystem::path const& path);

/// Throws an OutputError that names a file, or a ReaderGone, for an error number of the system.
[[noreturn]] void failToWrite(std::string const& name, int error);

/// Sends off what was written to std::cout.
/// \throws OutputError, ReaderGone
void flushStandardOutput();

/// Writes a text into a file of its own.
/// \throws OutputError
void writeFile(std::filesystem::path const& path, std::string_view text);

} // namespace sgview
