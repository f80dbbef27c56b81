#pragma once

#include "Viewer/Import/ModelCounts.h"
#include "Viewer/Overlay/SceneAppearance.h"
#include "Viewer/Scene/Bounds.h"
#include "Viewer/Scene/ModelScene.h"
#include "Viewer/Window/FileWatch.h"
#include "Viewer/Window/ModelLoad.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace sgview {

/// What comes out of a look at a document.
enum class DocumentNews {
    nothing,
    opened,    ///< another model is there
    reloaded,  ///< the same file's new content is there
    failed,    ///< what was there stays; `failure` says why
    cancelled, ///< what was there stays, as was asked for
};

/// The model that a window shows: loaded in the background, read again when its file changes or one that it
/// refers to, such as a texture. What was shown stays until something better is there. Needs the renderer's
/// context current.
class Document {
public:
    Document(ImportOptions import, SceneOptions scene);

    /// Begins to load a file, and gives up any load that goes on.
    void open(std::filesystem::path const& file);

    /// Begins to load the same file again.
    void reload();

    void cancel();

    /// Looks whether a load is done or a file has changed. Never waits.
    [[nodiscard]] DocumentNews look(FileWatch::Time now);

    /// The load that goes on, or null.
    [[nodiscard]] ModelLoad const* load() const { return load_.get(); }

    /// Null until the first model is there.
    [[nodiscard]] ModelScene* scene() const { return scene_.get(); }

    /// How the scene looks; null until the first model is there.
    [[nodiscard]] SceneAppearance* appearance() const { return appearance_.get(); }

    /// Grows whenever another scene takes the place of the last.
    [[nodiscard]] int generation() const { return generation_; }

    /// Of the scene; empty without one.
    [[nodiscard]] std::filesystem::path const& file() const { return file_; }
    [[nodiscard]] ModelCounts const& counts() const { return counts_; }

    /// Where the model is in its rest pose and wherever the animation chosen last takes it, with a margin.
    [[nodiscard]] Bounds const& bounds() const { return bounds_; }

    /// Why the last load came to nothing, or empty.
    [[nodiscard]] std::string const& failure() const { return failure_; }

    /// Settles the bounds for an animation, or `none`. Leaves the model in its rest pose; there is a scene.
    void prepare(Index animation);

private:
    void begin(std::filesystem::path const& file);
    DocumentNews finish();

    ImportOptions import_;
    SceneOptions options_;
    std::unique_ptr<ModelLoad> load_;
    std::unique_ptr<ModelScene> scene_;
    std::unique_ptr<SceneAppearance> appearance_; ///< of `scene_`
    std::filesystem::path file_;
    std::filesystem::path wanted_;
    FileWatch watch_; ///< of `wanted_` and what it refers to
    ModelCounts counts_;
    Bounds bounds_;
    std::string failure_;
    int generation_ = 0;
};

} // namespace sgview
