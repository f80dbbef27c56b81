#pragma once

#include "Viewer/Overlay/AxesOverlay.h"
#include "Viewer/Overlay/DisplayOptions.h"
#include "Viewer/Overlay/GridOverlay.h"
#include "Viewer/Overlay/InfluenceMap.h"
#include "Viewer/Overlay/MaterialEdits.h"
#include "Viewer/Overlay/NormalOverlay.h"
#include "Viewer/Overlay/SkeletonOverlay.h"
#include "Viewer/Scene/ModelScene.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// What a person has changed about how a scene looks: materials, ways of drawing, overlays. The scene's nodes
/// follow with each update.
class SceneAppearance {
public:
    /// \param scene  in its rest pose; lives longer
    explicit SceneAppearance(ModelScene& scene);

    /// Brings the scene in line with the options and the model's pose. Comes before each frame.
    /// \param up              the axis that points up on the screen
    /// \param pixelsPerPoint  what widths of lines are multiplied by; the model's own are a point wide
    void update(DisplayOptions const& options, Vector3 const& up, double pixelsPerPoint);

    [[nodiscard]] MaterialEdits& materials() { return materials_; }
    [[nodiscard]] InfluenceMap& influences() { return influences_; }

    /// Texts that belong to the overlays, at their places.
    [[nodiscard]] std::vector<OverlayLabel> labels() const;

    /// What the overlays show, a line each.
    [[nodiscard]] std::vector<std::string> legend() const;

    /// What the overlays cover beyond the model.
    [[nodiscard]] Bounds overlayBounds() const;

private:
    /// What the look of the model's parts depends on.
    struct Dress {
        bool wireframe = false;
        bool unlit = false;
        bool influences = false;
        std::size_t bone = 0;
        int edits = 0;
        double lineWidth = 0.0; ///< pixels

        bool operator==(Dress const&) const = default;
    };

    void updateStyle(DisplayOptions const& options, Vector3 const& up, double pixelsPerPoint);
    void dress(std::size_t part);
    void dressInInfluences(std::size_t part);
    void updateOverlays(DisplayOptions const& options);

    ModelScene& scene_;
    std::vector<std::vector<SGTextureLayer>> layers_; ///< of each part, as the file has them
    MaterialEdits materials_;
    InfluenceMap influences_;
    std::optional<Dress> dress_; ///< what the nodes show; none before the first update
    OverlayStyle style_;
    std::unique_ptr<NormalOverlay> normals_;
    std::unique_ptr<SkeletonOverlay> skeleton_;
    std::unique_ptr<AxesOverlay> axes_;
    std::unique_ptr<GridOverlay> grid_;
};

} // namespace sgview
