#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace sgview {

/// Tells when a file has become another, once whoever writes it has paused: by its time and size, which holds
/// on every kind of file system and for editors that put a new file in the old one's place.
class FileWatch {
public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr std::chrono::milliseconds interval{250}; ///< from one look to the next

    FileWatch() = default;

    /// Takes the file as it is for known.
    explicit FileWatch(std::filesystem::path file);

    /// Whether the file has changed, told once a change. Looks no more often than every `interval`.
    [[nodiscard]] bool hasChanged(Time now);

private:
    struct Stamp {
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        bool operator==(Stamp const&) const = default;
    };
    [[nodiscard]] std::optional<Stamp> look() const;

    std::filesystem::path file_;
    std::optional<Stamp> known_;
    std::optional<Stamp> seen_; ///< at the last look
    Time lastLook_;
};

} // namespace sgview
