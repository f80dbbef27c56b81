#include "Viewer/Scene/CameraView.h"

#include "Maths/UVector3.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace sgview {

namespace {

constexpr double halfFieldOfView = 20.0 * std::numbers::pi / 180.0; // of the shorter side
constexpr double margin = 1.04;
constexpr double farthestToNearest = 1e4; // more would cost a 24-bit depth buffer its precision

Matrix3 viewRotation(CameraView const& view)
{
    double const degrees = std::numbers::pi / 180.0;
    return rotation(Vector3(1.0, 0.0, 0.0), view.elevation * degrees) *
           rotation(Vector3(0.0, 1.0, 0.0), -view.azimuth * degrees);
}

std::array<Vector3, 8> cornersOf(Bounds const& bounds)
{
    std::array<Vector3, 8> corners;
    for (std::size_t i = 0; i < corners.size(); ++i)
        corners[i] = Vector3(i & 1 ? bounds.high.x : bounds.low.x, i & 2 ? bounds.high.y : bounds.low.y,
                             i & 4 ? bounds.high.z : bounds.low.z);
    return corners;
}

Bounds somethingToLookAt(Bounds bounds)
{
    if (bounds.empty())
        bounds.add(Vector3());
    double const size = length(bounds.high - bounds.low);
    double const magnitude = std::max(length(bounds.high), length(bounds.low));
    if (size <= 1e-12 * magnitude || size < 1e-30) { // a single point
        double const grown = magnitude > 0.0 ? 1e-3 * magnitude : 1.0;
        bounds.add(bounds.low - Vector3(grown, grown, grown));
        bounds.add(bounds.high + Vector3(grown, grown, grown));
    }
    return bounds;
}

} // namespace

Vector3 viewDirection(CameraView const& view)
{
    return transpose(viewRotation(view)) * Vector3(0.0, 0.0, -1.0);
}

smart_ptr<CameraBase> fitCamera(Bounds const& bounds, CameraView const& view, int width, int height)
{
    Bounds const subject = somethingToLookAt(bounds);
    Vector3 const centre = subject.low * 0.5 + subject.high * 0.5;
    Matrix3 const turn = viewRotation(view);

    double const shorter = std::min(width, height);
    double const slope = std::tan(halfFieldOfView);
    double const slopeX = slope * width / shorter;
    double const slopeY = slope * height / shorter;

    // The nearest distance from which every corner lies within the slopes.
    double distance = 0.0;
    double nearest = 0.0;
    double farthest = 0.0;
    for (Vector3 const& corner : cornersOf(subject)) {
        Vector3 const eye = turn * (corner - centre);
        distance = std::max({distance, std::abs(eye.x) / slopeX + eye.z, std::abs(eye.y) / slopeY + eye.z});
        nearest = std::max(nearest, eye.z);
        farthest = std::max(farthest, -eye.z);
    }
    distance *= margin;
    double const depthMargin = 0.01 * length(subject.high - subject.low);
    double const far = distance + farthest + depthMargin;
    double const near = std::max(distance - nearest - depthMargin, far / farthestToNearest);

    double const right = near * slopeX / view.zoom;
    double const top = near * slopeY / view.zoom;
    Matrix const toEye = Matrix(turn, Vector3(0.0, 0.0, -distance)) * Matrix::translationMatrix(-centre);
    return make_smart<CameraBase>(toEye, Matrix::frustum(-right, right, -top, top, near, far),
                                  quarl::Rect<int>{0, 0, width, height});
}

} // namespace sgview
