#include "Viewer/Window/FileWatch.h"

#include <utility>

namespace sgview {

FileWatch::FileWatch(std::filesystem::path file) : file_(std::move(file)), files_{{file_, {}, {}}}
{
    accept();
}

void FileWatch::accept()
{
    look();
    for (Watched& watched : files_)
        watched.known = watched.seen;
}

void FileWatch::follow(SourceFiles const& sources)
{
    if (files_.empty())
        return;
    files_.resize(1);
    for (SourceFile const& source : sources)
        files_.push_back({source.file, source.stamp, source.stamp});
}

bool FileWatch::hasChanged(Time now)
{
    if (files_.empty() || now - lastLook_ < interval)
        return false;
    lastLook_ = now;
    bool const havePaused = look();
    if (!havePaused || !files_.front().seen)
        return false;
    bool hasChanged = false;
    for (Watched& watched : files_) {
        if (!watched.seen || watched.seen == watched.known)
            continue;
        watched.known = watched.seen;
        hasChanged = true;
    }
    return hasChanged;
}

bool FileWatch::look()
{
    bool areSame = true;
    for (Watched& watched : files_) {
        std::optional<FileStamp> const before = std::exchange(watched.seen, stampOf(watched.file));
        areSame = areSame && watched.seen == before;
    }
    return areSame;
}

} // namespace sgview
