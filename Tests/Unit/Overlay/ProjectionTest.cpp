#include "Viewer/Overlay/Projection.h"

#include <gtest/gtest.h>

namespace sgview {
namespace {

CameraBase const camera(Matrix::translationMatrix(Vector3(0, 0, -2)), Matrix::frustum(-1, 1, -1, 1, 1, 10),
                        {30, 40, 200, 100});

TEST(Projection, CountsPixelsFromTheViewportsLowerLeftCorner)
{
    std::optional<PlaceInPicture> const middle = project(camera, {0, 0, 0});
    ASSERT_TRUE(middle.has_value());
    EXPECT_DOUBLE_EQ(middle->x, 100.0);
    EXPECT_DOUBLE_EQ(middle->y, 50.0);
    std::optional<PlaceInPicture> const corner = project(camera, {-2, -2, 0});
    ASSERT_TRUE(corner.has_value());
    EXPECT_DOUBLE_EQ(corner->x, 0.0);
    EXPECT_DOUBLE_EQ(corner->y, 0.0);
}

TEST(Projection, ShowsNothingBehindTheCamera)
{
    EXPECT_FALSE(project(camera, {0, 0, 3}).has_value());
    EXPECT_FALSE(project(camera, {0, 0, 2}).has_value());
}

} // namespace
} // namespace sgview
