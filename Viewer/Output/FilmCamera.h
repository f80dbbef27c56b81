#pragma once

#include "Viewer/Scene/CameraView.h"
#include "Viewer/Scene/ModelScene.h"

namespace sgview {

/// One camera for all frames of a film: whatever pose and side they show, the model is in view and keeps its
/// size and place.
class FilmCamera {
public:
    /// Poses the scene to see how far it reaches.
    /// \param animation      index of an animation, or `none`
    /// \param turns          whether the film looks from all sides
    /// \param width, height  of the picture, greater than 0; their ratio counts
    FilmCamera(ModelScene& scene, Index animation, CameraView const& view, bool turns, int width, int height);

    /// Looks from as many degrees further around the model.
    void aim(ModelScene& scene, double degrees) const;

private:
    CameraView view_;
    Vector3 centre_; ///< on the axis that the camera goes around
    smart_ptr<CameraBase> start_;
};

} // namespace sgview
