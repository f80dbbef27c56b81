#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/Technique.h"
#include "Viewer/Scene/CameraView.h"
#include "Viewer/Scene/SceneOptions.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// What a person asks of the window before it opens.
struct WindowOptions {
    static constexpr PictureSize usualSize{1280, 800};
    static constexpr Color usualBackground{0.86F, 0.88F, 0.90F, 1.0F};
    static constexpr char const* usualScreenshotName = "{model}-{date}-{time}";

    [[nodiscard]] static SceneOptions usualScene()
    {
        SceneOptions scene;
        scene.background = usualBackground;
        return scene;
    }

    std::vector<std::filesystem::path> files;
    ImportOptions import;
    std::optional<std::string> animation; ///< name or index; plays at once
    PictureSize size = usualSize;         ///< window points
    std::optional<double> scale;          ///< pixels a point, what the desktop wants where nothing is said
    std::optional<std::filesystem::path> module;
    std::optional<Technique> technique; ///< what the diagnostic finds best where nothing is said
    CameraView view;
    SceneOptions scene = usualScene();
    std::string screenshotName = usualScreenshotName;
};

} // namespace sgview
