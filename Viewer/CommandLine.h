#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Messages.h"
#include "Viewer/Picture.h"
#include "Viewer/Scene/CameraView.h"
#include "Viewer/Scene/SceneOptions.h"

#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace sgview {

/// A model file, and the pose it is wanted in.
struct ModelRequest {
    std::filesystem::path file;
    ImportOptions import;
    std::optional<std::string> animation; ///< name or index
    double seconds = 0.0;
};

/// Where a picture goes, and what draws it.
struct PictureRequest {
    std::filesystem::path output;
    PictureSize size;
    std::optional<std::filesystem::path> module;
};

struct RenderRequest {
    ModelRequest model;
    PictureRequest picture;
    CameraView view;
    SceneOptions scene;
};

struct InfoRequest {
    ModelRequest model;
    bool json = false;
};

struct DemoRequest {
    PictureRequest picture;
    double seconds = 0.0;
};

/// What a person typed, understood.
struct CommandLine {
    MessageOptions messages;
    std::variant<RenderRequest, InfoRequest, DemoRequest> request;
};

/// \return nothing where only help or the version was asked for, which has been printed then
/// \throws UsageError
[[nodiscard]] std::optional<CommandLine> parseCommandLine(int argc, char const* const* argv);

} // namespace sgview
