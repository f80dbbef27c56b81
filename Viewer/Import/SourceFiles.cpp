#include "Viewer/Import/SourceFiles.h"

#include <algorithm>

#include <sys/stat.h>

namespace sgview {

std::optional<FileStamp> stampOf(std::filesystem::path const& file)
{
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    constexpr std::int64_t second = 1'000'000'000;
    return FileStamp{status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec,
                     static_cast<std::uint64_t>(status.st_size)};
}

void add(SourceFiles& sources, std::filesystem::path const& file)
{
    if (sources.size() < mostSourceFiles &&
        std::ranges::find(sources, file, &SourceFile::file) == sources.end())
        sources.push_back({file, stampOf(file)});
}

} // namespace sgview
