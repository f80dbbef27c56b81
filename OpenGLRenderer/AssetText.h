#pragma once

#include <string>

/// The whole text of an asset; empty where it cannot be read, which is logged on the "error" channel.
/// \param path  below an asset folder, such as "Shaders/animationVertexShader.txt"
[[nodiscard]] std::string loadAssetText(std::string const& path);
