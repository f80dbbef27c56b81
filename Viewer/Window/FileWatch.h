#pragma once

#include "Viewer/Import/SourceFiles.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <vector>

namespace sgview {

/// Tells when a model's file or one that it refers to has become another, once whoever writes them has
/// paused.
class FileWatch {
public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr std::chrono::milliseconds interval{250}; ///< from one look to the next

    FileWatch() = default;

    /// Takes the model's file as it is for known.
    explicit FileWatch(std::filesystem::path file);

    /// The model's own; empty where there is none.
    [[nodiscard]] std::filesystem::path const& file() const { return file_; }

    /// Takes all files as they are for known.
    void accept();

    /// From now on the model refers to these files and no others, known as they were when they were read.
    void follow(SourceFiles const& sources);

    /// Whether a file has changed, told once a change. Looks no more often than every `interval`. A file that
    /// is gone may be on its way back and is waited for.
    [[nodiscard]] bool hasChanged(Time now);

private:
    struct Watched {
        std::filesystem::path file;
        std::optional<FileStamp> known;
        std::optional<FileStamp> seen; ///< at the last look
    };
    /// \return whether all are as they were at the last look
    bool look();

    std::filesystem::path file_;
    std::vector<Watched> files_; ///< the model's own first
    Time lastLook_;
};

} // namespace sgview
