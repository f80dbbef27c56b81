#include "Viewer/Platform/RendererModule.h"

#include "SceneGraph/SGRendererManager.h"
#include "Utilities/Strings.h"

#include <dlfcn.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace sgview {

namespace {

namespace fs = std::filesystem;

constexpr char const* fileName = "OpenGLRenderer.so";
constexpr char const* pathVariable = "SG_MODULE_PATH";

fs::path folderOfLibraries()
{
    Dl_info library{};
    if (::dladdr(reinterpret_cast<void const*>(&SGRendererManager::getRenderer), &library) == 0)
        return {};
    return fs::path(library.dli_fname).parent_path();
}

/// A bare name would send the loader to the system's own folders.
fs::path absoluteFile(fs::path const& place)
{
    std::error_code error;
    fs::path const file = fs::is_directory(place, error) ? place / fileName : place;
    return fs::absolute(file, error);
}

std::vector<fs::path> placesToTry(std::optional<fs::path> const& named)
{
    if (named)
        return {absoluteFile(*named)};
    std::vector<fs::path> places;
    if (char const* folders = std::getenv(pathVariable))
        for (std::string const& folder : string_split(folders, ':'))
            if (!folder.empty())
                places.push_back(fs::path(folder) / fileName);
    places.push_back(folderOfLibraries() / fileName);
    return places;
}

std::string lastLoaderError()
{
    char const* error = ::dlerror();
    return error ? error : "unknown error";
}

} // namespace

RendererModule::RendererModule(std::optional<fs::path> const& named)
{
    std::string reasons;
    for (fs::path const& place : placesToTry(named)) {
        handle_ = ::dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (handle_ && SGRendererManager::getRenderer())
            return;
        std::string const reason =
            handle_ ? place.string() + ": the module registers no renderer" : lastLoaderError();
        if (handle_)
            ::dlclose(handle_);
        reasons += (reasons.empty() ? "" : "; ") + reason;
    }
    throw ModuleError("no renderer module could be loaded; tried " + reasons);
}

RendererModule::~RendererModule()
{
    ::dlclose(handle_);
}

SGRenderer& RendererModule::renderer() const
{
    return *SGRendererManager::getRenderer();
}

} // namespace sgview
