#pragma once

#include "Viewer/Import/FileAccess.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace sgview {

/// Which library reads a model file, and as what.
struct FileKind {
    enum class Reader { gltf2, assimp };
    Reader reader = Reader::assimp;
    std::string extension; ///< without dot, lower case: that of the format the content is in
};

/// Tells model files from everything else by name and content together: a picture or a text with a model's
/// extension is refused, a model without one is known by its first bytes. Texts are expected in an 8-bit
/// encoding.
///
/// \throws ImportError  picture, text file, side file, format not read, empty file
[[nodiscard]] FileKind classify(std::filesystem::path const& file, std::span<std::uint8_t const> content);

/// How the names of models end: without dot, lower case.
[[nodiscard]] std::span<std::string_view const> modelExtensions();

/// Whether a file's name ends as those of models do.
[[nodiscard]] bool hasModelName(std::filesystem::path const& file);

} // namespace sgview
