#pragma once

#include "Maths/Matrix3.h"
#include "Maths/Rect.h"
#include "Viewer/Scene/Bounds.h"
#include "Viewer/Scene/CameraView.h"

#include <vector>

namespace sgview {

/// A camera that turns about a point of the model, led by a pointer.
///
/// Lengths on the screen are in window points, x to the right and y downwards. They refer to the area that
/// is free for the model, whose size comes by setArea.
class OrbitCamera {
public:
    using Up = CameraView::Up;
    enum class StandardView { front, back, left, right, top, bottom };

    /// \param first  what `reset` leads back to
    explicit OrbitCamera(CameraView const& first);

    void setArea(double width, double height);

    /// Brings all points into view, from the direction the camera has.
    void fit(std::vector<Vector3> const& points);

    /// As at first, but for the axis that is up; then `fit`.
    void startOver(std::vector<Vector3> const& points);

    /// As at first, then `fit`.
    void reset(std::vector<Vector3> const& points);

    /// As a pointer that drags the model does.
    void orbit(double x, double y);
    void pan(double x, double y);

    /// Gets nearer by a factor greater than 1, or farther; what is at a place of the area stays there.
    /// \param x, y  from the area's middle
    void zoom(double factor, double x, double y);

    /// From one of six sides. All points come into view again, unless zoom or pan have led elsewhere since
    /// they were.
    void look(StandardView view, std::vector<Vector3> const& points);
    void toggleOrthographic() { view_.orthographic = !view_.orthographic; }

    /// The next axis up, keeping the middle of the picture. The points are the model's, to fit.
    void cycleUp(std::vector<Vector3> const& points);

    [[nodiscard]] double azimuth() const { return view_.azimuth; }     ///< degrees, 0 up to 360
    [[nodiscard]] double elevation() const { return view_.elevation; } ///< degrees, -90 to 90
    [[nodiscard]] bool isOrthographic() const { return view_.orthographic; }
    [[nodiscard]] Up up() const { return view_.up; }
    [[nodiscard]] Vector3 const& target() const { return target_; }

    /// The way the camera looks, in world space.
    [[nodiscard]] Vector3 direction() const;

    /// World to the camera's axes: x to the right, y up, looking down -z.
    [[nodiscard]] Matrix3 rotation() const;

    /// What the renderer takes.
    /// \param scene     what must not be cut off by the near and far planes
    /// \param viewport  pixels
    /// \param free      the part of the viewport, pixels, that shows what the area does, or more
    [[nodiscard]] smart_ptr<CameraBase> camera(Bounds const& scene, quarl::Rect<int> const& viewport,
                                               quarl::Rect<int> const& free) const;

private:
    /// World units that a point of the window covers at the target.
    [[nodiscard]] double unitsPerPoint() const;
    void moveTarget(double right, double up);

    CameraView first_;
    CameraView view_;
    bool isFitted_ = false; ///< and neither zoomed nor panned since
    Vector3 target_;
    double distance_ = 1.0;       ///< from the camera to the target
    double fittedDistance_ = 1.0; ///< what `zoom` is limited by
    double width_ = 1.0;
    double height_ = 1.0;
};

} // namespace sgview
