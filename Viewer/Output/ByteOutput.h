#pragma once

#include "Viewer/Platform/OutputFile.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

namespace sgview {

/// Where the bytes of a result go: a file, which appears under its name once it is whole, or standard output.
class ByteOutput {
public:
    /// \param file  none for standard output
    /// \throws OutputError
    explicit ByteOutput(std::optional<std::filesystem::path> const& file);

    /// What went through is with the reader of a pipe, or on its way to the file.
    /// \throws OutputError  as soon as the system takes no more
    void write(std::span<std::uint8_t const> bytes);

    /// \throws OutputError
    void commit();

private:
    [[noreturn]] void fail(int error) const;

    std::optional<OutputFile> file_;
    std::FILE* stream_;
};

} // namespace sgview
