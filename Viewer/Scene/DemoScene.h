#pragma once

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGRootNode.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Scene/ModelInstance.h"

#include <memory>
#include <vector>

namespace sgview {

/// The demonstration scene: in one picture, each thing the renderer can draw. A swimming creature, its mirror
/// image, tinted and wireframe copies over a floor of two texture layers; a blended pane; plain, stippled and
/// closed curves; a panel that stands behind everything and is drawn in front.
class DemoScene {
public:
    /// \param creature  the demonstration model, checked
    explicit DemoScene(Model creature);

    /// What the renderer draws. Set a view first.
    [[nodiscard]] smart_ptr<SGRootNode> const& root() const { return root_; }

    /// Seconds after which it moves as from the start; 0 where nothing moves.
    [[nodiscard]] double length() const;

    /// Moves every creature on.
    void pose(double seconds);

    /// Fits the scene into a picture of so many pixels.
    void setView(int width, int height);

private:
    void addCreatures(smart_ptr<SGNode> const& lit);

    std::shared_ptr<ModelResources const> creature_;
    smart_ptr<SGRootNode> root_;
    smart_ptr<SGCameraNode> camera_;
    std::vector<ModelInstance> creatures_;
};

} // namespace sgview
