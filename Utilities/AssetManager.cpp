#include "Utilities/AssetManager.h"

#include "Utilities/Strings.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <optional>

template class RogueSingleton<AssetManager, AssetManagerFactory>;

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> foldersOfEnvironment()
{
    std::vector<fs::path> folders;
    if (char const* const list = std::getenv("SG_ASSET_PATH"))
        for (std::string const& folder : string_split(list, ':'))
            if (!folder.empty())
                folders.emplace_back(folder);
    return folders;
}

std::optional<fs::path> folderOfThisLibrary()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void const*>(&folderOfThisLibrary), &info) == 0 || !info.dli_fname)
        return {};
    std::error_code error;
    fs::path const library = fs::canonical(info.dli_fname, error);
    return error ? std::optional<fs::path>() : library.parent_path();
}

std::optional<fs::path> sourceFolder(fs::path const& libraryFolder)
{
    std::ifstream note(libraryFolder / SG_BUILD_TREE_NOTE);
    std::string folder;
    return std::getline(note, folder) ? std::optional<fs::path>(folder) : std::nullopt;
}

void checkPath(std::string const& name)
{
    fs::path const path(name);
    bool const climbs = std::ranges::find(path, fs::path("..")) != path.end();
    if (name.empty() || path.is_absolute() || climbs || name.find('\0') != std::string::npos)
        throw AssetError("Asset " + inQuotes(name) + ": the path must lead down from an asset folder");
}

} // namespace

AssetManager& AssetManager::getInstance()
{
    return RogueSingleton<AssetManager, AssetManagerFactory>::getInstance();
}

AssetManager::AssetManager() : folders_(foldersOfEnvironment())
{
    auto const libraryFolder = folderOfThisLibrary();
    if (!libraryFolder)
        return;
    folders_.push_back((*libraryFolder / SG_ASSETS_FROM_LIBRARY).lexically_normal());
    if (auto const source = sourceFolder(*libraryFolder))
        folders_.push_back(*source);
}

std::unique_ptr<std::istream> AssetManager::getFileStream(std::string const& path, bool binary) const
{
    fs::path const file = findFile(path);
    auto stream =
        std::make_unique<std::ifstream>(file, binary ? std::ios::in | std::ios::binary : std::ios::in);
    if (!*stream)
        throw AssetError("Asset " + inQuotes(path) + ": " + file.string() + " cannot be read");
    return stream;
}

fs::path AssetManager::findFile(std::string const& path) const
{
    checkPath(path);
    std::string tried;
    for (fs::path const& folder : folders_) {
        fs::path const file = folder / path;
        std::error_code error;
        if (fs::is_regular_file(file, error))
            return file;
        tried += (tried.empty() ? "" : ", ") + file.string();
    }
    throw AssetError("Asset " + inQuotes(path) + " not found; tried: " + tried);
}

void AssetManager::addFolder(fs::path folder)
{
    folders_.insert(folders_.begin(), std::move(folder));
}

smart_ptr<AssetManager> AssetManagerFactory::newInstance()
{
    return smart_ptr<AssetManager>(new AssetManager);
}
