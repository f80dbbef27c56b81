#include "Viewer/Window/FileWatch.h"

#include <utility>

namespace sgview {

FileWatch::FileWatch(std::filesystem::path file) : file_(std::move(file)), known_(look()), seen_(known_) {}

bool FileWatch::hasChanged(Time now)
{
    if (file_.empty() || now - lastLook_ < interval)
        return false;
    lastLook_ = now;
    std::optional<Stamp> const stamp = look();
    bool const hasPaused = stamp == seen_;
    seen_ = stamp;
    // A file that is gone may be on its way back.
    if (!stamp || !hasPaused || stamp == known_)
        return false;
    known_ = stamp;
    return true;
}

std::optional<FileWatch::Stamp> FileWatch::look() const
{
    std::error_code error;
    auto const time = std::filesystem::last_write_time(file_, error);
    if (error)
        return std::nullopt;
    std::uintmax_t const size = std::filesystem::file_size(file_, error);
    if (error)
        return std::nullopt;
    return Stamp{time, size};
}

} // namespace sgview
