#pragma once

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightData.h"
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

    /// \param animation  index of the clip, or `none` for the rest pose
    /// \param seconds    from the clip's start; past the end the clip's last moment holds
    void pose(Index animation, double seconds) { instance_.pose(animation, seconds); }

    /// Everything that is drawn, as posed, in world space.
    [[nodiscard]] Bounds bounds() const;
    [[nodiscard]] std::vector<SurfaceBounds> surfaceBounds() const { return instance_.surfaceBounds(); }

    /// Looks at the model as posed, all of it in view.
    void setView(CameraView const& view, int width, int height);

private:
    smart_ptr<SGRootNode> root_;
    smart_ptr<SGCameraNode> camera_;
    ModelInstance instance_;
};

/// The light that sgview draws models in: from over the viewer's shoulder.
[[nodiscard]] SGLightData headLight();

} // namespace sgview
