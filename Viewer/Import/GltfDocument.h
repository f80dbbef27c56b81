#pragma once

#include "Viewer/Import/FileAccess.h"

#include <filesystem>
#include <string>

#include <tiny_gltf.h>

namespace sgview {

/// A glTF 2 file as tinygltf reads it, with its buffers. Pictures in files and data URIs are still encoded;
/// nothing beyond the JSON's types has been checked.
struct GltfDocument {
    tinygltf::Model content;
    std::string file; ///< for messages
    bool binary = false;
};

/// \throws ImportError  broken, format not read (a required extension), refused path (of a buffer)
[[nodiscard]] GltfDocument parseGltf(std::filesystem::path const& file, Bytes const& bytes,
                                     FileAccess& access, Warnings& warnings);

} // namespace sgview
