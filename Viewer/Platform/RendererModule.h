#pragma once

#include "SceneGraph/SGRenderer.h"

#include <filesystem>
#include <optional>
#include <stdexcept>

namespace sgview {

/// No renderer could be loaded. what() is one line and lists the places tried, each with its reason.
class ModuleError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The renderer, loaded from its module. Its context stays current for as long as this lives, and scenes that
/// it has drawn are better released before.
class RendererModule {
public:
    /// Without `named`, looks in the folders of the environment variable SG_MODULE_PATH (separated by
    /// colons), then beside the engine's libraries.
    /// \param named  the module's file, or a folder that holds it; no other place is tried then
    /// \throws ModuleError
    explicit RendererModule(std::optional<std::filesystem::path> const& named = std::nullopt);
    RendererModule(RendererModule const&) = delete;
    RendererModule& operator=(RendererModule const&) = delete;
    ~RendererModule();

    /// Not to be kept longer than the module.
    [[nodiscard]] SGRenderer& renderer() const;

private:
    void* handle_ = nullptr;
};

} // namespace sgview
