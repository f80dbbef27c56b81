#pragma once

#include "SceneGraph/SGRenderer.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

/// No renderer could be loaded. what() is one line and lists the places tried, each with its reason.
class SGModuleError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A renderer, loaded from its module.
///
/// The context must be current while a module is loaded, and stays current, on one thread, for as long as
/// this lives, unless SGRendererManager::shutdown is set before. Scenes may outlive it: unloading takes back
/// what the renderer left on them. One module at a time.
class SGRendererModule {
public:
    /// Without `named`, looks in the folders of the environment variable SG_MODULE_PATH (separated by
    /// colons), then beside this library, then in the folder OpenGLRenderer beside this library. A module of
    /// another interface version is refused before any of its code runs.
    /// \param named  the module's file, or a folder that holds it; no other place is tried then
    /// Throws SGModuleError.
    explicit SGRendererModule(std::optional<std::filesystem::path> const& named = std::nullopt);
    SGRendererModule(SGRendererModule const&) = delete;
    SGRendererModule& operator=(SGRendererModule const&) = delete;
    ~SGRendererModule();

    /// Not to be kept longer than the module.
    [[nodiscard]] SGRenderer& renderer() const;

private:
    /// Returns why not; empty once a renderer is there.
    std::string load(std::filesystem::path const& file);

    void* handle_ = nullptr;
};
