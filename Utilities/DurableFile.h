#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

/// Small text files of the user's that must not be lost, whenever the program or the machine stops, and that
/// anything may have been done to meanwhile. Paths are absolute. All operations throw std::system_error,
/// which names the file.
namespace DurableFile {

/// The file that a chain of symbolic links leads to, there or not; the path itself where it is no link.
[[nodiscard]] std::filesystem::path followLinks(std::filesystem::path path);

/// The bytes of a regular file; none if it is not there or longer than `limit`.
[[nodiscard]] std::string read(std::filesystem::path const& file, std::size_t limit);

/// Replaces a regular file, or makes it with mode 0600. Whenever this is cut short, the file is whole: as it
/// was, or as it is to be. One process at a time may write a file.
/// \param file  no symbolic link, which would be replaced
void write(std::filesystem::path const& file, std::string_view text);

/// Makes a folder and those above it that are missing, each with mode 0700.
void makeFolder(std::filesystem::path const& folder);

} // namespace DurableFile
