#include "SceneGraph/SGRendererModule.h"

#include "SceneGraph/SGRendererInterface.h"
#include "SceneGraph/SGRendererManager.h"
#include "Utilities/Strings.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr char const* fileName = "OpenGLRenderer.so";
constexpr char const* folderName = "OpenGLRenderer";
constexpr char const* pathVariable = "SG_MODULE_PATH";

constexpr std::string_view title = SG_RENDERER_INTERFACE_TITLE;
constexpr std::string_view engineVersion = SG_RENDERER_INTERFACE_VERSION;

std::optional<fs::path> folderOfLibraries()
{
    Dl_info library{};
    if (::dladdr(reinterpret_cast<void const*>(&SGRendererManager::getRenderer), &library) == 0)
        return {};
    std::error_code error;
    fs::path const file = fs::canonical(library.dli_fname, error);
    return error ? std::optional<fs::path>() : file.parent_path();
}

/// A bare name would send the loader to the system's own folders, and an empty one to the program itself.
fs::path absoluteFile(fs::path const& place)
{
    std::error_code error;
    fs::path const absolute = fs::current_path(error) / place;
    return fs::is_directory(absolute, error) ? absolute / fileName : absolute;
}

std::vector<fs::path> placesToTry(std::optional<fs::path> const& named)
{
    if (named)
        return {absoluteFile(*named)};
    std::vector<fs::path> places;
    if (char const* const folders = std::getenv(pathVariable))
        for (std::string const& folder : string_split(folders, ':'))
            if (!folder.empty())
                places.push_back(absoluteFile(fs::path(folder) / fileName));
    if (auto const libraries = folderOfLibraries()) {
        places.push_back(*libraries / fileName);
        places.push_back(*libraries / folderName / fileName);
    }
    return places;
}

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// The interface version that a module's file names; empty where it names none.
std::string versionIn(std::string_view content)
{
    std::size_t const at = content.find(title);
    if (at == std::string_view::npos)
        return {};
    std::string_view const version = content.substr(at + title.size());
    return {version.begin(), std::ranges::find_if_not(version, isDigit)};
}

/// Of a module, all but debugging information.
std::string beginningOf(fs::path const& file, std::ifstream& stream)
{
    constexpr std::uintmax_t enough = 64 << 20;
    std::error_code error;
    std::string content(std::min(fs::file_size(file, error), enough), '\0');
    stream.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(stream.gcount()));
    return content;
}

/// Why a module must not be loaded; empty where nothing speaks against it. Of what cannot be read the loader
/// itself has most to say.
std::string objectionTo(fs::path const& file)
{
    std::error_code error;
    if (fs::exists(file, error) && !fs::is_regular_file(file, error))
        return "not a regular file";
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return {};
    std::string const version = versionIn(beginningOf(file, stream));
    if (version.empty())
        return "no renderer module: it names no interface version";
    if (version != engineVersion)
        return "the module has interface version " + version + ", the engine " + std::string(engineVersion);
    return {};
}

/// Texts of the loader start with the file's name, as a rule.
std::string loaderError(fs::path const& file)
{
    char const* const error = ::dlerror();
    std::string const text = error ? error : "unknown error";
    return text.find(file.string()) == std::string::npos ? file.string() + ": " + text : text;
}

} // namespace

SGRendererModule::SGRendererModule(std::optional<fs::path> const& named)
{
    if (SGRendererManager::getRenderer())
        throw SGModuleError("no renderer module can be loaded beside the one in use");
    std::string reasons;
    for (fs::path const& place : placesToTry(named)) {
        std::string const reason = load(place);
        if (reason.empty())
            return;
        reasons += (reasons.empty() ? "" : "; ") + reason;
    }
    throw SGModuleError("no renderer module could be loaded; tried " + reasons);
}

std::string SGRendererModule::load(fs::path const& file)
{
    std::string const objection = objectionTo(file);
    if (!objection.empty())
        return file.string() + ": " + objection;
    handle_ = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_)
        return loaderError(file);
    if (SGRendererManager::getRenderer())
        return {};
    ::dlclose(handle_);
    return file.string() + ": the module registers no renderer";
}

SGRendererModule::~SGRendererModule()
{
    ::dlclose(handle_);
}

SGRenderer& SGRendererModule::renderer() const
{
    return *SGRendererManager::getRenderer();
}
