#include "Viewer/Scene/CameraView.h"

#include "Viewer/Scene/Bounds.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace sgview {

namespace {

constexpr double halfFieldOfView = 13.0 * std::numbers::pi / 180.0; // of the shorter side
constexpr double margin = 1.04;
constexpr double farthestToNearest = 1e4; // more would cost a 24-bit depth buffer its precision

Matrix3 viewRotation(CameraView const& view)
{
    double const degrees = std::numbers::pi / 180.0;
    return Matrix3::rotationMatrix(Vector3(1.0, 0.0, 0.0), view.elevation * degrees) *
           Matrix3::rotationMatrix(Vector3(0.0, 1.0, 0.0), -view.azimuth * degrees);
}

/// A box to look at; never a single point.
Bounds boundsOf(std::vector<Vector3> const& points)
{
    Bounds bounds;
    for (Vector3 const& point : points)
        bounds.add(point);
    if (bounds.empty())
        bounds.add(Vector3());
    double const size = length(bounds.high - bounds.low);
    double const magnitude = std::max(length(bounds.high), length(bounds.low));
    if (size <= 1e-12 * magnitude || size < 1e-30) {
        double const grown = magnitude > 0.0 ? 1e-3 * magnitude : 1.0;
        bounds.add(bounds.low - Vector3(grown, grown, grown));
        bounds.add(bounds.high + Vector3(grown, grown, grown));
    }
    return bounds;
}

/// How far points reach in one direction of the picture, against lines of sight of a given slope: a camera at
/// distance d that looks past them at `middle` sees them all where d >= distance.
struct Reach {
    double slope;
    double low = -std::numeric_limits<double>::infinity();
    double high = low;

    void add(double across, double towards)
    {
        high = std::max(high, across + towards * slope);
        low = std::max(low, -across + towards * slope);
    }
    [[nodiscard]] double distance() const { return (high + low) / (2.0 * slope); }
    [[nodiscard]] double middle() const { return (high - low) / 2.0; }
};

} // namespace

Vector3 viewDirection(CameraView const& view)
{
    return transpose(viewRotation(view)) * Vector3(0.0, 0.0, -1.0);
}

smart_ptr<CameraBase> fitCamera(std::vector<Vector3> const& points, CameraView const& view, int width,
                                int height)
{
    Bounds const bounds = boundsOf(points);
    Vector3 const centre = bounds.low * 0.5 + bounds.high * 0.5;
    double const size = length(bounds.high - bounds.low);
    Matrix3 const turn = viewRotation(view);

    double const shorter = std::min(width, height);
    double const slope = std::tan(halfFieldOfView);
    Reach across{slope * width / shorter};
    Reach up{slope * height / shorter};
    double nearest = -size;
    double farthest = size;
    auto const see = [&](Vector3 const& point) {
        Vector3 const eye = turn * (point - centre);
        across.add(eye.x, eye.z);
        up.add(eye.y, eye.z);
        nearest = std::max(nearest, eye.z);
        farthest = std::min(farthest, eye.z);
    };
    for (Vector3 const& point : points)
        if (isFinite(point))
            see(point);
    if (nearest - farthest < 1e-6 * size || points.empty()) { // a point, or a sheet seen face on
        see(bounds.low);
        see(bounds.high);
    }

    double const distance =
        std::max({margin * across.distance(), margin * up.distance(), nearest + 0.1 * size});
    double const depthMargin = 0.01 * size;
    double const far = distance - farthest + depthMargin;
    double const near = std::max(distance - nearest - depthMargin, far / farthestToNearest);

    double const right = near * across.slope / view.zoom;
    double const top = near * up.slope / view.zoom;
    Matrix const toEye =
        Matrix(turn, Vector3(-across.middle(), -up.middle(), -distance)) * Matrix::translationMatrix(-centre);
    return make_smart<CameraBase>(toEye, Matrix::frustum(-right, right, -top, top, near, far),
                                  quarl::Rect<int>{0, 0, width, height});
}

} // namespace sgview
