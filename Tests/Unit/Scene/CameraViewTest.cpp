#include "Viewer/Scene/CameraView.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace sgview;

namespace {

using Up = CameraView::Up;
using Points = std::vector<Vector3>;

/// The corners of a box.
Points box(Vector3 const& low, Vector3 const& high)
{
    Points corners;
    for (int i = 0; i < 8; ++i)
        corners.emplace_back(i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z);
    return corners;
}

/// Where a point lands, in normalised device coordinates.
Vector3 projected(CameraBase const& camera, Vector3 const& point)
{
    Matrix const all = camera.projection * camera.view;
    double const w = all(3, 0) * point.x + all(3, 1) * point.y + all(3, 2) * point.z + all(3, 3);
    return transformPoint(all, point) * (1.0 / w);
}

struct FittedCase {
    char const* name;
    Points points;
    CameraView view;
    int width;
    int height;
};

class FittedCamera : public testing::TestWithParam<FittedCase> {};

TEST_P(FittedCamera, HasEveryCornerInViewAndFillsThePicture)
{
    auto const& [name, points, view, width, height] = GetParam();
    auto const camera = fitCamera(points, view, width, height);
    double reach = 0.0;
    for (Vector3 const& point : points) {
        Vector3 const p = projected(*camera, point);
        EXPECT_LT(std::abs(p.x), 1.0);
        EXPECT_LT(std::abs(p.y), 1.0);
        EXPECT_LT(std::abs(p.z), 1.0);
        reach = std::fmax(reach, std::fmax(std::abs(p.x), std::abs(p.y)));
    }
    EXPECT_GT(reach, 0.9);
    EXPECT_EQ(camera->viewport, (quarl::Rect<int>{0, 0, width, height}));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FittedCamera,
    testing::Values(FittedCase{"cube", box({-1, -1, -1}, {1, 1, 1}), {}, 1024, 768},
                    FittedCase{"tall", box({0, 0, 0}, {1, 40, 2}), {30, 20, 1}, 1024, 768},
                    FittedCase{"portraitPicture", box({-5, 0, 0}, {5, 1, 2}), {-70, 5, 1}, 300, 900},
                    FittedCase{"fromBelow", box({-1, -1, -1}, {1, 1, 1}), {200, -60, 1}, 640, 480},
                    FittedCase{"tinyFarOut", box({1e6, 0, 0}, {1e6 + 0.5, 1, 1}), {}, 64, 64},
                    FittedCase{"flat", box({-3, 2, -3}, {3, 2, 3}), {0, 45, 1}, 800, 600},
                    FittedCase{"zUp", box({0, 0, 0}, {1, 2, 40}), {30, 20, 1, Up::z}, 640, 480},
                    FittedCase{"parallel", box({-1, -1, -1}, {1, 1, 1}), {30, 20, 1, Up::y, true}, 640, 480},
                    FittedCase{
                        "parallelTunnel", box({-1, -1, -90}, {1, 1, 9}), {0, 0, 1, Up::y, true}, 64, 48},
                    FittedCase{"parallelXUp", box({-5, 0, 0}, {5, 1, 2}), {-70, 5, 1, Up::x, true}, 30, 90}),
    [](auto const& fitted) { return fitted.param.name; });

TEST(CameraView, AzimuthWalksRoundTheModelFromFrontToLeft)
{
    EXPECT_NEAR(length(viewDirection({0.0, 0.0, 1.0}) - Vector3(0, 0, -1)), 0.0, 1e-15);
    EXPECT_NEAR(length(viewDirection({90.0, 0.0, 1.0}) - Vector3(-1, 0, 0)), 0.0, 1e-15);
    EXPECT_NEAR(length(viewDirection({0.0, 90.0, 1.0}) - Vector3(0, -1, 0)), 0.0, 1e-15);
}

TEST(CameraView, ZoomMagnifies)
{
    Points const points = box({-1, -1, -1}, {1, 1, 1});
    Vector3 const corner(1, 1, 1);
    Vector3 const once = projected(*fitCamera(points, {30, 20, 1}, 100, 100), corner);
    Vector3 const twice = projected(*fitCamera(points, {30, 20, 2}, 100, 100), corner);
    EXPECT_NEAR(twice.x, 2.0 * once.x, 1e-12);
    EXPECT_NEAR(twice.y, 2.0 * once.y, 1e-12);
}

TEST(CameraView, TheAxisThatIsUpPointsUpInThePicture)
{
    for (auto const& [up, axis] : {std::pair(Up::y, Vector3(0, 1, 0)), std::pair(Up::z, Vector3(0, 0, 1)),
                                   std::pair(Up::x, Vector3(1, 0, 0))}) {
        CameraView const view{25.0, 15.0, 1.0, up};
        Vector3 const seen = viewRotation(view) * axis;
        EXPECT_NEAR(seen.x, 0.0, 1e-15);
        EXPECT_GT(seen.y, 0.9);
        EXPECT_EQ(upDirection(up), axis);
        EXPECT_NEAR(length(uprightness(up) * axis - Vector3(0, 1, 0)), 0.0, 1e-15);
        EXPECT_NEAR(length(viewRotation(view) * viewDirection(view) - Vector3(0, 0, -1)), 0.0, 1e-15);
    }
}

TEST(CameraView, OrthographicShrinksNothingWithItsDistance)
{
    Points const points = box({-1, -1, -6}, {1, 1, 6});
    auto const camera = fitCamera(points, {0.0, 0.0, 2.0, Up::y, true}, 100, 100);
    Vector3 const near = projected(*camera, {1, 1, 6});
    Vector3 const far = projected(*camera, {1, 1, -6});
    EXPECT_DOUBLE_EQ(near.x, far.x);
    EXPECT_DOUBLE_EQ(near.y, far.y);
    EXPECT_NEAR(near.x, 2.0 / 1.04, 1e-12) << "twice as large, but for the margin";
    EXPECT_LT(near.z, far.z);
}

TEST(CameraView, NothingSomethingSmallAndALineGiveAUsableCamera)
{
    for (Points const& points :
         {Points(), box({5, 5, 5}, {5, 5, 5}), box({0, 0, 0}, {0, 0, 0}), box({0, 0, -3}, {0, 0, 3})})
        for (bool const isOrthographic : {false, true}) {
            auto const camera = fitCamera(points, {0.0, 0.0, 1.0, Up::y, isOrthographic}, 100, 100);
            for (int i = 0; i < 16; ++i) {
                EXPECT_TRUE(std::isfinite(camera->view.data()[i]));
                EXPECT_TRUE(std::isfinite(camera->projection.data()[i]));
            }
        }
}

} // namespace
