#pragma once

#include "Viewer/Import/FileAccess.h"
#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Import/Model.h"

#include <filesystem>

namespace sgview {

/// What a reader makes of a file, before it is decided whether that can be drawn.
struct ReadModel {
    Model model;
    bool hasPoints = false;
};

/// Reads a glTF 2 file, text or binary.
///
/// \throws ImportError
[[nodiscard]] ReadModel readGltf(std::filesystem::path const& file, Bytes const& bytes,
                                 ImportOptions const& options, FileAccess& access, Warnings& warnings);

} // namespace sgview
