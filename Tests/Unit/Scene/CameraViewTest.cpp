#include "Viewer/Scene/CameraView.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace sgview;

namespace {

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
                    FittedCase{"flat", box({-3, 2, -3}, {3, 2, 3}), {0, 45, 1}, 800, 600}),
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

TEST(CameraView, NoPointsAndASinglePointGiveAUsableCamera)
{
    for (Points const& points : {Points(), box({5, 5, 5}, {5, 5, 5}), box({0, 0, 0}, {0, 0, 0})}) {
        auto const camera = fitCamera(points, {}, 100, 100);
        for (int i = 0; i < 16; ++i) {
            EXPECT_TRUE(std::isfinite(camera->view.data()[i]));
            EXPECT_TRUE(std::isfinite(camera->projection.data()[i]));
        }
    }
}

} // namespace
