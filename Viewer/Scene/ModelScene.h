#pragma once

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGRootNode.h"
#include "Viewer/Scene/Bounds.h"
#include "Viewer/Scene/CameraView.h"
#include "Viewer/Scene/ModelInstance.h"
#include "Viewer/Scene/SceneOptions.h"

#include <vector>

namespace sgview {

/// A whole scene around one model: background, light, camera, model.
class ModelScene {
public:
    /// \param model  checked
    ModelScene(Model model, SceneOptions const& options);

    /// What the renderer draws. Set a camera first.
    [[nodiscard]] smart_ptr<SGRootNode> const& root() const { return root_; }

    /// \param animation  index of an animation, or `none` for the rest pose
    /// \param seconds    from its start; past the end its last moment holds
    void pose(Index animation, double seconds) { instance_.pose(animation, seconds); }

    /// Everything that is drawn, as posed, in world space.
    [[nodiscard]] Bounds bounds() const;
    [[nodiscard]] std::vector<SurfaceBounds> surfaceBounds() const { return instance_.surfaceBounds(); }

    /// Looks at the model as posed, all of it in view.
    void setView(CameraView const& view, int width, int height);

    /// Looks through a camera of the caller's.
    /// \param direction  the way it looks, in world space
    void setCamera(smart_ptr<CameraBase> camera, Vector3 const& direction);

    /// Nodes, materials, skins and animations as imported.
    [[nodiscard]] Model const& model() const { return instance_.model(); }

    /// Every vertex of every surface and curve that is shown, as posed, in world space.
    [[nodiscard]] std::vector<Vector3> posedVertices() const { return instance_.posedVertices(); }

    /// What stands below it is seen through the scene's camera and, but for curves and quads, lit.
    [[nodiscard]] smart_ptr<SGCameraNode> const& cameraNode() const { return camera_; }

    /// The model as it stands in world space.
    [[nodiscard]] ModelInstance& instance() { return instance_; }

    /// The lights that shine on the model.
    [[nodiscard]] std::vector<SGLightData>& lights() { return lights_->lights; }

private:
    smart_ptr<SGRootNode> root_;
    smart_ptr<SGLightsNode> lights_;
    smart_ptr<SGCameraNode> camera_;
    ModelInstance instance_;
};

/// The light that sgview draws models in: from over the viewer's shoulder.
[[nodiscard]] SGLightData headLight();

} // namespace sgview
