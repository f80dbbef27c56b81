#pragma once

#include "Viewer/Bench/BenchSceneKind.h"
#include "Viewer/CommandLine/Messages.h"
#include "Viewer/CommandLine/Moments.h"
#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Output/FrameSchedule.h"
#include "Viewer/Output/OutputName.h"
#include "Viewer/Output/PictureFormat.h"
#include "Viewer/Output/WebpEncoder.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/Technique.h"
#include "Viewer/Scene/CameraView.h"
#include "Viewer/Scene/SceneOptions.h"
#include "Viewer/Window/WindowOptions.h"

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sgview {

/// A model file, and the pose it is wanted in.
struct ModelRequest {
    std::filesystem::path file;
    ImportOptions import;
    std::optional<std::string> animation; ///< name or index
    double seconds = 0.0;
};

/// Which graphics device draws: that of a number, or the system's own choice.
struct DeviceRequest {
    bool list = false; ///< say which there are, and draw nothing
    std::optional<std::uint32_t> number;
};

/// Where a picture goes, and what draws it.
struct PictureRequest {
    std::filesystem::path output;
    PictureSize size;
    std::optional<std::filesystem::path> module;
    std::optional<Technique> technique; ///< that of the stored verdict where nothing is said
    DeviceRequest device;
};

struct RenderRequest {
    std::vector<std::filesystem::path> files;
    ModelRequest model;     ///< without its file
    PictureRequest picture; ///< without its output
    std::optional<OutputName> output;
    std::optional<PictureFormat> format; ///< that of the output's name where nothing is said
    std::optional<int> quality;          ///< of WebP, as WebpEncoder has it
    FilmOptions film;
    int supersample = 1;
    std::optional<int> largestSide; ///< pixels, to which the picture is scaled down
    CameraView view;
    SceneOptions scene; ///< without opacity in its background where a transparent one is wanted
    bool json = false;

    [[nodiscard]] PictureFormat formatInUse() const { return format ? *format : formatFor(*output); }
    [[nodiscard]] bool isTransparent() const { return scene.background.a == 0.0F; }
};

struct InfoRequest {
    bool gpu = false; ///< about the graphics card in place of models
    std::vector<std::filesystem::path> files;
    ModelRequest model; ///< without its file
    std::optional<std::filesystem::path> module;
    DeviceRequest device;
    bool json = false;
};

struct DemoRequest {
    PictureRequest picture; ///< without its output where a window shows it
    bool window = false;
    double seconds = 0.0;
};

struct CompareRequest {
    static constexpr int usualSide = 512; ///< pixels

    bool demo = false;  ///< the demonstration scene in place of the model
    ModelRequest model; ///< without its moment
    std::optional<std::filesystem::path> output;
    PictureSize size{usualSide, usualSide};
    std::optional<std::filesystem::path> module;
    DeviceRequest device;
    Moments moments;
    CameraView view;
    SceneOptions scene;
    bool json = false;
};

struct DiagnoseRequest {
    bool force = false; ///< a run whatever is known
    bool why = false;   ///< no run, only what is known
    std::optional<std::filesystem::path> report;
    std::optional<std::filesystem::path> json;
    std::optional<ModelRequest> model; ///< to try the techniques on, without its moment
    Moments moments;                   ///< of the model's animation
    std::optional<std::filesystem::path> module;
    DeviceRequest device;
    std::optional<std::uint32_t> timeLimit; ///< seconds
};

struct BenchRequest {
    static constexpr int usualSide = 512; ///< pixels
    static constexpr int usualFrames = 60;

    std::optional<BenchSceneKind> scene = BenchSceneKind::many; ///< a crowd of the model where there is none
    ModelRequest model;                                         ///< without its moment
    std::optional<int> count;                                   ///< the usual one where nothing is said
    bool moving = false;
    int frames = usualFrames;
    PictureSize size{usualSide, usualSide};
    std::optional<std::filesystem::path> module;
    std::optional<Technique> technique; ///< that of the stored verdict where nothing is said
    DeviceRequest device;
    std::optional<std::filesystem::path> output; ///< of the last frame
    bool json = false;
};

struct WindowRequest {
    WindowOptions options;
    bool listKeys = false; ///< print the table of keys, and open no window
};

/// What every command can be told.
struct GeneralOptions {
    MessageOptions messages;
    std::optional<std::filesystem::path> configuration; ///< the user's own file where nothing is said
    bool noConfiguration = false;
};

/// What a person typed, understood.
struct CommandLine {
    MessageOptions messages;
    std::variant<RenderRequest, InfoRequest, DemoRequest, CompareRequest, DiagnoseRequest, BenchRequest,
                 WindowRequest>
        request;
};

/// What the command line leaves open is taken from the configuration file.
/// \return nothing where only something about sgview itself was asked for, such as help, which has been printed
///         then
/// \throws UsageError, OutputError  the latter where what was asked for cannot be printed
[[nodiscard]] std::optional<CommandLine> parseCommandLine(int argc, char const* const* argv);

} // namespace sgview
