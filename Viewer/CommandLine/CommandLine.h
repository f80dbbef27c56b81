#pragma once

#include "Viewer/CommandLine/Messages.h"
#include "Viewer/CommandLine/Moments.h"
#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/Technique.h"
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
    std::optional<Technique> technique; ///< that of the stored verdict where nothing is said
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

struct CompareRequest {
    static constexpr int usualSide = 512; ///< pixels

    bool demo = false;  ///< the demonstration scene in place of the model
    ModelRequest model; ///< without its moment
    std::optional<std::filesystem::path> output;
    PictureSize size{usualSide, usualSide};
    std::optional<std::filesystem::path> module;
    Moments moments;
    CameraView view;
    SceneOptions scene;
    bool json = false;
};

/// What a person typed, understood.
struct CommandLine {
    MessageOptions messages;
    std::variant<RenderRequest, InfoRequest, DemoRequest, CompareRequest> request;
};

/// \return nothing where only help or the version was asked for, which has been printed then
/// \throws UsageError
[[nodiscard]] std::optional<CommandLine> parseCommandLine(int argc, char const* const* argv);

} // namespace sgview
