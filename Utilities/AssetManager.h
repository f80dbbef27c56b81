#pragma once

#include "Utilities/RogueSingleton.h"
#include "Utilities/smart_ptr.h"

#include <filesystem>
#include <istream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

/// An asset that is nowhere to be found or cannot be read. what() names the asset and every place tried.
class AssetError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class AssetManagerFactory;

/// Finds the files that the engine ships, such as "Shaders/animationVertexShader.txt".
///
/// Looked for, in this order: the folders a host has added (the last first), the folders of the environment
/// variable SG_ASSET_PATH (separated by colons), the installed tree beside this library, the build tree this
/// library was made in.
class AssetManager : public smart_base {
public:
    /// The process's asset manager.
    [[nodiscard]] static AssetManager& getInstance();

    /// Opens an asset by its path below an asset folder, with forward slashes.
    /// \param binary  bytes as they are; otherwise as the platform reads text
    /// Throws AssetError.
    [[nodiscard]] std::unique_ptr<std::istream> getFileStream(std::string const& path, bool binary) const;

    /// Where an asset is. Throws AssetError.
    [[nodiscard]] std::filesystem::path findFile(std::string const& path) const;

    /// Looks in `folder` before all places known so far.
    void addFolder(std::filesystem::path folder);

private:
    friend class AssetManagerFactory;
    AssetManager();

    std::vector<std::filesystem::path> folders_; ///< first tried first
};

class AssetManagerFactory {
public:
    [[nodiscard]] static smart_ptr<AssetManager> newInstance();
};

extern template class RogueSingleton<AssetManager, AssetManagerFactory>;
