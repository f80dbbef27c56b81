#include "Viewer/Window/OrbitCamera.h"

#include <algorithm>
#include <cmath>

namespace sgview {

namespace {

constexpr double degreesPerPoint = 0.4;
constexpr double nearest = 1e-3; // of the distance from which all is in view
constexpr double farthest = 1e3;

double wrapped(double degrees)
{
    double const rest = std::fmod(degrees, 360.0);
    return rest < 0.0 ? rest + 360.0 : rest;
}

} // namespace

OrbitCamera::OrbitCamera(CameraView const& first) : first_(first), view_(first) {}

void OrbitCamera::setArea(double width, double height)
{
    width_ = std::max(width, 1.0);
    height_ = std::max(height, 1.0);
}

void OrbitCamera::fit(std::vector<Vector3> const& points)
{
    FittedView const fitted = fitView(points, view_, width_, height_);
    target_ = fitted.target;
    distance_ = fittedDistance_ = fitted.distance;
    isFitted_ = true;
}

void OrbitCamera::startOver(std::vector<Vector3> const& points)
{
    Up const up = view_.up;
    view_ = first_;
    view_.up = up;
    fit(points);
}

void OrbitCamera::reset(std::vector<Vector3> const& points)
{
    view_ = first_;
    fit(points);
}

void OrbitCamera::orbit(double x, double y)
{
    view_.azimuth = wrapped(view_.azimuth - x * degreesPerPoint);
    view_.elevation = std::clamp(view_.elevation + y * degreesPerPoint, -90.0, 90.0);
}

void OrbitCamera::pan(double x, double y)
{
    moveTarget(-x * unitsPerPoint(), y * unitsPerPoint());
    isFitted_ = false;
}

void OrbitCamera::zoom(double factor, double x, double y)
{
    double const before = unitsPerPoint();
    distance_ = std::clamp(distance_ / factor, nearest * fittedDistance_, farthest * fittedDistance_);
    double const gained = before - unitsPerPoint();
    moveTarget(x * gained, -y * gained);
    isFitted_ = false;
}

void OrbitCamera::look(StandardView view, std::vector<Vector3> const& points)
{
    constexpr double steepest = 90.0;
    switch (view) {
    case StandardView::front:
        view_.azimuth = 0.0;
        break;
    case StandardView::back:
        view_.azimuth = 180.0;
        break;
    case StandardView::left:
        view_.azimuth = 90.0;
        break;
    case StandardView::right:
        view_.azimuth = 270.0;
        break;
    case StandardView::top:
    case StandardView::bottom:
        view_.azimuth = 0.0;
        break;
    }
    view_.elevation = view == StandardView::top ? steepest : view == StandardView::bottom ? -steepest : 0.0;
    if (isFitted_)
        fit(points);
}

void OrbitCamera::cycleUp(std::vector<Vector3> const& points)
{
    view_.up = up() == Up::y ? Up::z : up() == Up::z ? Up::x : Up::y;
    fit(points);
}

Vector3 OrbitCamera::direction() const
{
    return transpose(rotation()) * Vector3(0.0, 0.0, -1.0);
}

Matrix3 OrbitCamera::rotation() const
{
    return viewRotation(view_);
}

smart_ptr<CameraBase> OrbitCamera::camera(Bounds const& scene, quarl::Rect<int> const& viewport,
                                          quarl::Rect<int> const& free) const
{
    Matrix3 const turn = rotation();
    Bounds depths; // z alone: how far the corners are from the target, towards the camera
    for (int corner = 0; corner < 8 && !scene.empty(); ++corner) {
        Vector3 const point((corner & 1) ? scene.high.x : scene.low.x,
                            (corner & 2) ? scene.high.y : scene.low.y,
                            (corner & 4) ? scene.high.z : scene.low.z);
        depths.add(Vector3(0.0, 0.0, (turn * (point - target_)).z));
    }
    if (depths.empty())
        depths.add(Vector3());

    double const margin = 0.01 * (depths.high.z - depths.low.z) + 1e-6 * distance_;
    double const far = distance_ - depths.low.z + margin;
    double const near = distance_ - depths.high.z - margin;
    // From the middle of what is free.
    double const pixelsPerPoint = std::min(free.width / width_, free.height / height_);
    double const perPixel = unitsPerPoint() / (distance_ * pixelsPerPoint);
    ViewEdges edges;
    edges.left = (viewport.x - free.x - free.width / 2.0) * perPixel;
    edges.right = edges.left + viewport.width * perPixel;
    edges.bottom = (viewport.y - free.y - free.height / 2.0) * perPixel;
    edges.top = edges.bottom + viewport.height * perPixel;

    Matrix const toEye = Matrix(turn, Vector3(0.0, 0.0, -distance_)) * Matrix::translationMatrix(-target_);
    return make_smart<CameraBase>(toEye, projectionOf(view_, edges, distance_, near, far), viewport);
}

double OrbitCamera::unitsPerPoint() const
{
    return 2.0 * distance_ * slopeOfView() / view_.zoom / std::min(width_, height_);
}

void OrbitCamera::moveTarget(double right, double up)
{
    target_ += transpose(rotation()) * Vector3(right, up, 0.0);
}

} // namespace sgview
