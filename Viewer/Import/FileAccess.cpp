#include "Viewer/Import/FileAccess.h"

#include "Utilities/FileDescriptor.h"
#include "Viewer/Import/FileNames.h"
#include "Viewer/Import/ImportError.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sgview {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t largestFile = std::uint64_t{512} << 20;

std::string_view kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return "a folder";
    if (S_ISFIFO(mode))
        return "a pipe";
    if (S_ISSOCK(mode))
        return "a socket";
    return "a device";
}

/// Regular files only; the kind is asked of the opened file, so that it cannot be exchanged in between.
Bytes readRegularFile(fs::path const& file)
{
    struct stat before {};
    if (::stat(file.c_str(), &before) != 0) {
        bool const absent = errno == ENOENT || errno == ENOTDIR;
        throw ImportError(absent ? ImportFailure::notFound : ImportFailure::notReadable, file.string(),
                          absent ? "there is no such file" : std::strerror(errno));
    }
    if (!S_ISREG(before.st_mode))
        throw ImportError(ImportFailure::notReadable, file.string(),
                          std::string(kindOf(before.st_mode)) + ", not a file");

    // Not blocking, so that a pipe put in the file's place does not hold the caller up.
    FileDescriptor const descriptor(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!descriptor.isOpen() || ::fstat(descriptor.get(), &status) != 0)
        throw ImportError(ImportFailure::notReadable, file.string(), std::strerror(errno));
    if (!S_ISREG(status.st_mode))
        throw ImportError(ImportFailure::notReadable, file.string(), "not a regular file");
    if (static_cast<std::uint64_t>(status.st_size) > largestFile)
        throw ImportError(ImportFailure::tooBig, file.string(), "larger than 512 MiB");

    Bytes bytes(static_cast<std::size_t>(status.st_size));
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t const count = ::read(descriptor.get(), bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw ImportError(ImportFailure::notReadable, file.string(), std::strerror(errno));
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return bytes;
}

/// Forward slashes, no leading "./".
std::string normalised(std::string_view name)
{
    std::string path(name);
    std::ranges::replace(path, '\\', '/');
    while (path.starts_with("./"))
        path.erase(0, path.find_first_not_of('/', 1));
    return path;
}

/// Why a name is refused; empty where it is not.
std::string_view refusal(std::string const& path)
{
    if (path.starts_with("//") || path.find("://") != std::string::npos)
        return "a network path";
    if (path.starts_with('/') || path.starts_with('~') || lowerCase(path).starts_with("file:") ||
        (path.size() > 1 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0])) != 0))
        return "an absolute path";
    if (path == ".." || path.starts_with("../") || path.ends_with("/..") ||
        path.find("/../") != std::string::npos)
        return "a path through a parent folder";
    return {};
}

std::string lastPart(std::string const& path)
{
    return path.substr(path.find_last_of("/:") + 1);
}

/// What is looked for in place of a path: itself unless it is refused, then its last parts, fewer and fewer,
/// down to the bare name.
std::vector<std::string> tailsOf(std::string const& path)
{
    constexpr std::size_t mostParts = 4; // each is looked for in every folder
    std::vector<std::string> tails;
    for (std::size_t start = path.size(); start > 0 && tails.size() < mostParts;) {
        std::size_t const separator = start < 2 ? std::string::npos : path.find_last_of("/:", start - 2);
        start = separator == std::string::npos ? 0 : separator + 1;
        std::string tail = path.substr(start);
        if (!tails.empty() && !refusal(tail).empty())
            break;
        tails.push_back(std::move(tail));
    }
    std::ranges::reverse(tails);
    if (refusal(path).empty() && tails.front() != path)
        tails.insert(tails.begin(), path);
    return tails;
}

std::vector<std::string> tailsOfName(std::string_view name)
{
    std::string const path = normalised(name);
    std::string const bare = lastPart(path);
    bool const names = !bare.empty() && bare != "." && bare != ".." && path.find('\0') == std::string::npos;
    return names ? tailsOf(path) : std::vector<std::string>();
}

std::optional<fs::path> regularFile(fs::path const& path)
{
    std::error_code failed;
    if (fs::is_regular_file(path, failed))
        return path;
    return {};
}

/// `name` below `folder` with the case of what is there, part by part.
std::optional<fs::path> withOtherCase(fs::path const& folder, std::string const& name)
{
    fs::path found = folder;
    for (fs::path const& part : fs::path(name)) {
        std::string const wanted = lowerCase(part.string());
        std::error_code failed;
        bool matched = false;
        for (fs::directory_iterator entry(found, failed), end; !failed && entry != end && !matched;
             entry.increment(failed)) {
            if (lowerCase(entry->path().filename().string()) == wanted) {
                found = entry->path();
                matched = true;
            }
        }
        if (!matched)
            return {};
    }
    return regularFile(found);
}

} // namespace

Bytes readModelFile(fs::path const& file)
{
    Bytes bytes = readRegularFile(file);
    if (bytes.empty())
        throw ImportError(ImportFailure::emptyFile, file.string(), "the file is empty");
    return bytes;
}

FileAccess::FileAccess(fs::path const& modelFile, std::vector<fs::path> const& folders, Warnings& warnings,
                       SourceFiles* sources)
    : warnings_(&warnings), sources_(sources)
{
    std::error_code failed;
    fs::path const own = modelFile.has_parent_path() ? modelFile.parent_path() : fs::path(".");
    folders_.push_back(fs::canonical(own, failed));
    for (fs::path const& folder : folders) {
        fs::path const real = fs::canonical(folder, failed);
        if (failed)
            warnings_->add("folder '" + folder.string() + "': " + failed.message());
        else
            folders_.push_back(real);
    }
}

bool FileAccess::isRefused(std::string_view name)
{
    return !refusal(normalised(name)).empty();
}

bool FileAccess::isInside(fs::path const& realPath) const
{
    return std::ranges::any_of(folders_, [&](fs::path const& folder) {
        auto const [inFolder, inPath] = std::ranges::mismatch(folder, realPath);
        return inFolder == folder.end() && inPath != realPath.end();
    });
}

void FileAccess::note(fs::path const& file)
{
    if (sources_)
        add(*sources_, file);
}

FileAccess::Search FileAccess::search(std::vector<std::string> const& tails)
{
    Search result;
    for (std::string const& tail : tails)
        for (fs::path const& folder : folders_) {
            std::optional<fs::path> found = regularFile(folder / tail);
            if (!found)
                found = withOtherCase(folder, tail);
            if (!found)
                continue;
            // Under the path it was come upon by, which a link may lead elsewhere from one day.
            note(*found);
            std::error_code failed;
            fs::path real = fs::canonical(*found, failed);
            if (failed)
                continue;
            if (isInside(real))
                return {std::move(real), false};
            result.leadsOut = true;
        }
    return result;
}

std::optional<fs::path> FileAccess::resolve(std::string_view name)
{
    std::vector<std::string> const tails = tailsOfName(name);
    if (tails.empty())
        return {};
    Search found = search(tails);
    if (!found.file)
        for (fs::path const& folder : folders_)
            for (std::string const& tail : {tails.front(), tails.back()})
                note(folder / tail);
    return std::move(found.file);
}

std::string FileAccess::absenceOf(std::string_view name)
{
    std::string const path = normalised(name);
    if (std::string_view const reason = refusal(path); !reason.empty())
        return std::string(reason) + ", refused; no '" + lastPart(path) + "' in the model's folder" +
               (folders_.size() > 1 ? " or those named" : "");
    return search(tailsOfName(name)).leadsOut ? "a link out of the model's folder, refused" : "not found";
}

std::optional<Bytes> FileAccess::read(std::string_view name)
{
    std::optional<fs::path> const path = resolve(name);
    if (!path)
        return {};
    try {
        return readRegularFile(*path);
    } catch (ImportError const& error) {
        warnings_->add(error.what());
        return {};
    }
}

} // namespace sgview
