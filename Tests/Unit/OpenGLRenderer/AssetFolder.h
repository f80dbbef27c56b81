#pragma once

#include "Utilities/AssetManager.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace RendererTesting {

/// A folder of made-up assets that is looked in before all others, while it lives.
class AssetFolder {
public:
    AssetFolder()
    {
        static int count = 0;
        std::string const name = "assets-" + std::to_string(getpid()) + '-' + std::to_string(++count);
        path = std::filesystem::temp_directory_path() / name;
        std::filesystem::create_directories(path / "Shaders");
        AssetManager::getInstance().addFolder(path);
    }
    AssetFolder(AssetFolder const&) = delete;
    AssetFolder& operator=(AssetFolder const&) = delete;
    ~AssetFolder()
    {
        RogueSingleton<AssetManager, AssetManagerFactory>::reset();
        std::filesystem::remove_all(path);
    }

    void write(std::string const& asset, std::string const& text) const
    {
        std::ofstream(path / asset, std::ios::binary) << text;
    }

private:
    std::filesystem::path path;
};

} // namespace RendererTesting
