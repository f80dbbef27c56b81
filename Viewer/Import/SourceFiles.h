#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace sgview {

/// What tells a file's content from an earlier one, on every kind of file system and for editors that put a
/// new file in the old one's place.
struct FileStamp {
    std::int64_t time = 0; ///< of the last change, nanoseconds
    std::uint64_t size = 0;
    bool operator==(FileStamp const&) const = default;
};

/// Nothing where there is no regular file.
[[nodiscard]] std::optional<FileStamp> stampOf(std::filesystem::path const& file);

/// A file besides the model's own that an import came upon, as it was before anything was read from it.
struct SourceFile {
    std::filesystem::path file;
    std::optional<FileStamp> stamp; ///< nothing where it was looked for and not there
};

/// All of them, each once. So many at most: a hostile model names any number.
using SourceFiles = std::vector<SourceFile>;
inline constexpr std::size_t mostSourceFiles = 500;

/// Adds a file as it is now, unless it is among them.
void add(SourceFiles& sources, std::filesystem::path const& file);

} // namespace sgview
