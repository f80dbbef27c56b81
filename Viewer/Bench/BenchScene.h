#pragma once

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGRootNode.h"

namespace sgview {

/// A scene whose work is known, for measuring: one directional light, a camera that has everything in view,
/// black behind it. The same frame number always gives the same picture.
class BenchScene {
public:
    BenchScene(BenchScene const&) = delete;
    BenchScene& operator=(BenchScene const&) = delete;
    virtual ~BenchScene();

    /// What an application does before it draws a frame: sets poses and transforms that change.
    /// \param frame  from 0
    virtual void prepare(int frame) = 0;

    /// What the renderer draws. Look at it first.
    [[nodiscard]] smart_ptr<SGRootNode> const& root() const { return root_; }

    /// Has everything in view in a picture of so many pixels.
    void setView(int width, int height);

protected:
    /// Where the camera stands: it looks down -z, and its shorter side takes in 45 degrees.
    struct Standpoint {
        Vector3 eye;
        double near = 0.0; ///< distance of what is nearest
        double far = 0.0;
    };

    BenchScene();

    void lookFrom(Standpoint const& standpoint) { standpoint_ = standpoint; }

    /// What stands below it is lit and in the camera's world.
    [[nodiscard]] smart_ptr<SGCameraNode> const& stage() const { return camera_; }

private:
    smart_ptr<SGRootNode> root_;
    smart_ptr<SGCameraNode> camera_;
    Standpoint standpoint_;
};

} // namespace sgview
