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
constexpr double smallestShare = 1e-3; // of the model's size that an orthographic picture shows

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

/// Points as seen from one direction, and the nearest place from which all are in view.
struct Fit {
    Fit(std::vector<Vector3> const& points, CameraView const& view, double width, double height)
        : turn(viewRotation(view)),
          isOrthographic(view.orthographic),
          bounds(boundsOf(points)),
          centre(bounds.low * 0.5 + bounds.high * 0.5),
          size(length(bounds.high - bounds.low)),
          across{slopeOfView() * width / std::min(width, height)},
          up{slopeOfView() * height / std::min(width, height)},
          nearest(-size),
          farthest(size)
    {
        for (Vector3 const& point : points)
            if (isFinite(point))
                see(turn * (point - centre));
        if (nearest - farthest < 1e-6 * size || points.empty()) { // a point, or a sheet seen face on
            see(turn * (bounds.low - centre));
            see(turn * (bounds.high - centre));
        }
        distance = margin * std::max(across.distance(), up.distance());
        distance =
            std::max(distance, isOrthographic ? smallestShare * size / slopeOfView() : nearest + 0.1 * size);
    }

    void see(Vector3 const& eye)
    {
        double const towards = isOrthographic ? 0.0 : eye.z;
        across.add(eye.x, towards);
        up.add(eye.y, towards);
        nearest = std::max(nearest, eye.z);
        farthest = std::min(farthest, eye.z);
    }

    Matrix3 turn; ///< world to the camera's axes
    bool isOrthographic;
    Bounds bounds;
    Vector3 centre;
    double size;
    Reach across;
    Reach up;
    double nearest; ///< towards the camera, from the centre
    double farthest;
    double distance; ///< from the camera to the centre's depth
};

} // namespace

std::string_view nameOf(CameraView::Up up)
{
    switch (up) {
    case CameraView::Up::y:
        return "y";
    case CameraView::Up::z:
        return "z";
    case CameraView::Up::x:
        return "x";
    }
    return "unknown";
}

Matrix3 uprightness(CameraView::Up up)
{
    constexpr double quarter = std::numbers::pi / 2.0;
    switch (up) {
    case CameraView::Up::z:
        return Matrix3::rotationMatrix(Vector3(1.0, 0.0, 0.0), -quarter);
    case CameraView::Up::x:
        return Matrix3::rotationMatrix(Vector3(0.0, 0.0, 1.0), quarter);
    default:
        return {};
    }
}

Vector3 upDirection(CameraView::Up up)
{
    switch (up) {
    case CameraView::Up::z:
        return {0.0, 0.0, 1.0};
    case CameraView::Up::x:
        return {1.0, 0.0, 0.0};
    default:
        return {0.0, 1.0, 0.0};
    }
}

double slopeOfView()
{
    return std::tan(halfFieldOfView);
}

Matrix3 viewRotation(CameraView const& view)
{
    double const degrees = std::numbers::pi / 180.0;
    return Matrix3::rotationMatrix(Vector3(1.0, 0.0, 0.0), view.elevation * degrees) *
           Matrix3::rotationMatrix(Vector3(0.0, 1.0, 0.0), -view.azimuth * degrees) * uprightness(view.up);
}

Vector3 viewDirection(CameraView const& view)
{
    return transpose(viewRotation(view)) * Vector3(0.0, 0.0, -1.0);
}

Matrix projectionOf(CameraView const& view, ViewEdges const& edges, double distance, double near, double far)
{
    constexpr double farthestToNearest = 1e4; // more would cost a 24-bit depth buffer its precision
    constexpr double leastFar = 1e-3;         // of the distance: all of it may lie behind the camera
    auto const edgesAt = [&](double depth) {
        return ViewEdges{edges.left * depth, edges.right * depth, edges.bottom * depth, edges.top * depth};
    };
    if (view.orthographic) {
        auto const [left, right, bottom, top] = edgesAt(distance);
        return Matrix::orthographic(left, right, bottom, top, near, far);
    }
    far = std::max(far, leastFar * distance);
    near = std::max(near, far / farthestToNearest);
    auto const [left, right, bottom, top] = edgesAt(near);
    return Matrix::frustum(left, right, bottom, top, near, far);
}

FittedView fitView(std::vector<Vector3> const& points, CameraView const& view, double width, double height)
{
    Fit const fit(points, view, width, height);
    return {fit.centre + transpose(fit.turn) * Vector3(fit.across.middle(), fit.up.middle(), 0.0),
            fit.distance};
}

smart_ptr<CameraBase> fitCamera(std::vector<Vector3> const& points, CameraView const& view, int width,
                                int height)
{
    Fit const fit(points, view, width, height);
    double const depthMargin = 0.01 * fit.size;
    double const far = fit.distance - fit.farthest + depthMargin;
    double const near = fit.distance - fit.nearest - depthMargin;
    Matrix const toEye = Matrix(fit.turn, Vector3(-fit.across.middle(), -fit.up.middle(), -fit.distance)) *
                         Matrix::translationMatrix(-fit.centre);
    double const right = fit.across.slope / view.zoom;
    double const top = fit.up.slope / view.zoom;
    return make_smart<CameraBase>(toEye,
                                  projectionOf(view, {-right, right, -top, top}, fit.distance, near, far),
                                  quarl::Rect<int>{0, 0, width, height});
}

} // namespace sgview
