#include "Viewer/Output/FilmCamera.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

namespace sgview {

namespace {

using std::numbers::pi;

/// Moments of an animation that are looked at.
constexpr int poses = 24;

// How finely the body is measured that a turning model fills.
constexpr int outlineDirections = 32;
constexpr int ringCorners = 48;

using PointsOfPose = std::function<void(std::vector<Vector3> const&)>;

void forEachPose(ModelScene& scene, Index animation, PointsOfPose const& see)
{
    double const length =
        animation == none ? 0.0 : scene.model().animations[static_cast<std::size_t>(animation)].length;
    for (int i = 0; i < (length > 0.0 ? poses : 1); ++i) {
        scene.pose(animation, length * i / (poses - 1));
        see(scene.posedVertices());
    }
}

/// For each of some directions, the point that lies farthest that way.
template <std::size_t count>
class Farthest {
public:
    explicit Farthest(std::array<Vector3, count> const& directions) : directions_(directions)
    {
        reach_.fill(-std::numeric_limits<double>::infinity());
    }

    void add(Vector3 const& point)
    {
        if (!isFinite(point))
            return;
        for (std::size_t i = 0; i < count; ++i) {
            double const reach = dot(point, directions_[i]);
            if (reach > reach_[i]) {
                reach_[i] = reach;
                points_[i] = point;
            }
        }
    }

    [[nodiscard]] std::vector<Vector3> points() const
    {
        if (!std::isfinite(reach_[0]))
            return {};
        return {points_.begin(), points_.end()};
    }

private:
    std::array<Vector3, count> directions_;
    std::array<double, count> reach_;
    std::array<Vector3, count> points_;
};

/// The points that decide where a camera of one direction has to stand.
std::vector<Vector3> silhouette(ModelScene& scene, Index animation, CameraView const& view, int width,
                                int height)
{
    double const shorter = std::min(width, height);
    double const slope = view.orthographic ? 0.0 : slopeOfView();
    double const across = slope * width / shorter;
    double const up = slope * height / shorter;
    Matrix3 const fromEye = transpose(viewRotation(view));
    Farthest<12> farthest({Vector3(1, 0, 0), Vector3(-1, 0, 0), Vector3(0, 1, 0), Vector3(0, -1, 0),
                           Vector3(0, 0, 1), Vector3(0, 0, -1), fromEye * Vector3(1, 0, across),
                           fromEye * Vector3(-1, 0, across), fromEye * Vector3(0, 1, up),
                           fromEye * Vector3(0, -1, up), fromEye * Vector3(0, 0, 1),
                           fromEye * Vector3(0, 0, -1)});
    forEachPose(scene, animation, [&](std::vector<Vector3> const& points) {
        for (Vector3 const& point : points)
            farthest.add(point);
    });
    return farthest.points();
}

/// As x and y of the outline: distances from the upright axis through a point, and heights above it.
std::vector<Vector3> outlineAround(ModelScene& scene, Index animation, Vector3 const& centre,
                                   Matrix3 const& upright)
{
    std::array<Vector3, outlineDirections> directions;
    for (int i = 0; i < outlineDirections; ++i) {
        double const angle = pi * i / (outlineDirections - 1) - pi / 2.0;
        directions[static_cast<std::size_t>(i)] = Vector3(std::cos(angle), std::sin(angle), 0.0);
    }
    Farthest<outlineDirections> farthest(directions);
    forEachPose(scene, animation, [&](std::vector<Vector3> const& points) {
        for (Vector3 const& point : points) {
            Vector3 const place = upright * (point - centre);
            farthest.add({std::hypot(place.x, place.z), place.y, 0.0});
        }
    });
    return farthest.points();
}

Vector3 middleOf(ModelScene& scene, Index animation)
{
    Bounds bounds;
    forEachPose(scene, animation, [&bounds](std::vector<Vector3> const& points) {
        for (Vector3 const& point : points)
            bounds.add(point);
    });
    return bounds.empty() ? Vector3() : bounds.low * 0.5 + bounds.high * 0.5;
}

/// The body that a model fills by turning around the upright axis through a point.
std::vector<Vector3> turned(std::vector<Vector3> const& outline, Vector3 const& centre,
                            Matrix3 const& upright)
{
    double const circumscribed = 1.0 / std::cos(pi / ringCorners);
    std::vector<Vector3> rings;
    for (Vector3 const& place : outline)
        for (int i = 0; i < ringCorners; ++i) {
            double const angle = 2.0 * pi * i / ringCorners;
            double const radius = place.x * circumscribed;
            rings.push_back(centre + transpose(upright) * Vector3(radius * std::cos(angle), place.y,
                                                                  radius * std::sin(angle)));
        }
    return rings;
}

} // namespace

FilmCamera::FilmCamera(ModelScene& scene, Index animation, CameraView const& view, bool turns, int width,
                       int height)
    : view_(view)
{
    if (!turns) {
        start_ = fitCamera(silhouette(scene, animation, view, width, height), view, width, height);
        return;
    }
    centre_ = middleOf(scene, animation);
    Matrix3 const upright = uprightness(view.up);
    start_ = fitCamera(turned(outlineAround(scene, animation, centre_, upright), centre_, upright), view,
                       width, height);
}

void FilmCamera::aim(ModelScene& scene, double degrees) const
{
    auto camera = make_smart<CameraBase>(*start_);
    CameraView view = view_;
    if (degrees != 0.0) {
        camera->view = start_->view * Matrix::translationMatrix(centre_) *
                       Matrix::rotationMatrix(upDirection(view.up), -degrees * pi / 180.0) *
                       Matrix::translationMatrix(-centre_);
        view.azimuth += degrees;
    }
    scene.setCamera(camera, viewDirection(view));
}

} // namespace sgview
