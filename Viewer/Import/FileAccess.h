#pragma once

#include "Viewer/Import/SourceFiles.h"
#include "Viewer/Import/Warnings.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

using Bytes = std::vector<std::uint8_t>;

/// Reads a model file.
///
/// \throws ImportError  not found, not readable (a folder, a device, a pipe, no permission), empty, too big
[[nodiscard]] Bytes readModelFile(std::filesystem::path const& file);

/// Decides which further files a model may read: regular files whose path, links followed, lies inside the
/// model's own folder or a folder that the user names.
///
/// A name is looked for in all of these folders, the model's own first: as it stands, then by its last parts
/// alone ("textures/a.png", "a.png"). One that is absolute, of another machine, or leads to a parent folder
/// is refused as it stands. Upper and lower case are told apart only where both exist.
class FileAccess {
public:
    /// \param warnings  must outlive this
    /// \param sources   where not null, takes note of every file that is come upon or missed; likewise
    FileAccess(std::filesystem::path const& modelFile, std::vector<std::filesystem::path> const& folders,
               Warnings& warnings, SourceFiles* sources = nullptr);

    /// Where the file that a model calls `name` lies; nothing if there is none that may be read.
    [[nodiscard]] std::optional<std::filesystem::path> resolve(std::string_view name);

    /// Why `resolve` finds nothing, for people: "not found".
    [[nodiscard]] std::string absenceOf(std::string_view name);

    /// The content of what `resolve` finds; nothing, and a warning where the cause is not absence.
    [[nodiscard]] std::optional<Bytes> read(std::string_view name);

    /// Whether `name` itself was refused, whatever its last part led to.
    [[nodiscard]] static bool isRefused(std::string_view name);

private:
    struct Search {
        std::optional<std::filesystem::path> file; ///< its real path
        bool leadsOut = false;                     ///< whether there is a link to where nothing may be read
    };
    [[nodiscard]] Search search(std::vector<std::string> const& tails);
    [[nodiscard]] bool isInside(std::filesystem::path const& realPath) const;
    void note(std::filesystem::path const& file);

    std::vector<std::filesystem::path> folders_; ///< real paths, the model's own first
    Warnings* warnings_;
    SourceFiles* sources_;
};

} // namespace sgview
