#include "Viewer/Window/OrbitCamera.h"

#include "Viewer/Overlay/Projection.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace sgview {
namespace {

using Up = CameraView::Up;
using View = OrbitCamera::StandardView;

constexpr double width = 800.0;
constexpr double height = 500.0;
constexpr quarl::Rect<int> viewport{0, 0, 800, 500};

std::vector<Vector3> const box{{-2.0, -1.0, -0.5}, {2.0, -1.0, -0.5}, {-2.0, 1.0, -0.5}, {2.0, 1.0, -0.5},
                               {-2.0, -1.0, 0.5},  {2.0, -1.0, 0.5},  {-2.0, 1.0, 0.5},  {2.0, 1.0, 0.5}};

Bounds boundsOfBox()
{
    Bounds bounds;
    for (Vector3 const& corner : box)
        bounds.add(corner);
    return bounds;
}

OrbitCamera fitted(CameraView const& view = {})
{
    OrbitCamera camera(view);
    camera.setArea(width, height);
    camera.fit(box);
    return camera;
}

/// Where a point comes to lie: window points from the area's middle, y downwards, and depth from -1 to 1.
Vector3 onScreen(OrbitCamera const& camera, Vector3 const& point)
{
    smart_ptr<CameraBase> const base = camera.camera(boundsOfBox(), viewport, viewport);
    Matrix const m = base->projection * base->view;
    auto const row = [&](int r) {
        return m(r, 0) * point.x + m(r, 1) * point.y + m(r, 2) * point.z + m(r, 3);
    };
    double const w = row(3);
    return {row(0) / w * width / 2.0, -row(1) / w * height / 2.0, row(2) / w};
}

void expectNear(Vector3 const& a, Vector3 const& b, double tolerance)
{
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

TEST(OrbitCamera, FirstLooksAsThePictureOfRender)
{
    for (CameraView const& view : {CameraView{-50.0, 35.0, 1.7}, CameraView{20.0, 5.0, 1.0, Up::z, true}}) {
        OrbitCamera const camera = fitted(view);
        smart_ptr<CameraBase> const base = camera.camera(boundsOfBox(), viewport, viewport);
        smart_ptr<CameraBase> const rendered = fitCamera(box, view, viewport.width, viewport.height);
        EXPECT_EQ(base->viewport, rendered->viewport);
        for (Vector3 const& corner : box)
            expectNear(transformPoint(base->view, corner), transformPoint(rendered->view, corner), 1e-9);
        // Near and far planes may differ, what they cut out of the picture may not.
        for (int row = 0; row < 2; ++row)
            for (int column = 0; column < 4; ++column)
                EXPECT_NEAR(base->projection(row, column), rendered->projection(row, column), 1e-9);
    }
}

TEST(OrbitCamera, FitHasAllInViewFromEverySideAndFillsIt)
{
    for (View const side : {View::front, View::back, View::left, View::right, View::top, View::bottom}) {
        OrbitCamera camera = fitted();
        camera.look(side, box);
        camera.fit(box);
        double most = 0.0;
        for (Vector3 const& corner : box) {
            Vector3 const seen = onScreen(camera, corner);
            most = std::max({most, std::abs(seen.x) / (width / 2.0), std::abs(seen.y) / (height / 2.0)});
            EXPECT_LT(std::abs(seen.z), 1.0);
        }
        EXPECT_LT(most, 1.0);
        EXPECT_GT(most, 0.9);
    }
}

/// How much of the area a box takes from its middle, to the sides and upwards; 1 is up to the edge.
double mostOfArea(OrbitCamera const& camera, std::vector<Vector3> const& corners)
{
    double most = 0.0;
    for (Vector3 const& corner : corners) {
        Vector3 const seen = onScreen(camera, corner);
        most = std::max({most, std::abs(seen.x) / (width / 2.0), std::abs(seen.y) / (height / 2.0)});
    }
    return most;
}

TEST(OrbitCamera, StandardViewsFitAnewUntilAPersonZoomsOrPans)
{
    std::vector<Vector3> pole;
    for (Vector3 const& corner : box)
        pole.emplace_back(corner.z, corner.x * 2.0, corner.y);
    OrbitCamera camera({0.0, 90.0, 1.0}); // its end
    camera.setArea(width, height);
    camera.fit(pole);
    camera.orbit(20.0, 0.0);
    camera.look(View::front, pole);
    EXPECT_LT(mostOfArea(camera, pole), 1.0);
    EXPECT_GT(mostOfArea(camera, pole), 0.9);

    for (bool const zooms : {true, false}) {
        OrbitCamera led = camera;
        if (zooms)
            led.zoom(2.0, 0.0, 0.0);
        else
            led.pan(50.0, 0.0);
        OrbitCamera const before = led;
        led.look(View::left, pole);
        expectNear(led.target(), before.target(), 0.0);
        EXPECT_EQ(mostOfArea(led, {led.target() + Vector3(0.0, 1.0, 0.0)}),
                  mostOfArea(before, {before.target() + Vector3(0.0, 1.0, 0.0)}));
        led.fit(pole);
        led.look(View::front, pole);
        EXPECT_NEAR(mostOfArea(led, pole), mostOfArea(camera, pole), 1e-12);
    }
}

TEST(OrbitCamera, ShowsInTheFreePartWhatTheAreaDoes)
{
    OrbitCamera camera = fitted({40.0, 10.0, 1.2});
    Vector3 const point(0.5, 0.3, 0.2);
    constexpr quarl::Rect<int> whole{0, 0, 900, 700};
    constexpr quarl::Rect<int> free{30, 90, 800, 500};
    for (int i = 0; i < 2; ++i) {
        for (double const depth : {-0.4, 0.4}) {
            Vector3 const place = point + camera.direction() * depth;
            Vector3 const alone = onScreen(camera, place);
            smart_ptr<CameraBase> const base = camera.camera(boundsOfBox(), whole, free);
            EXPECT_EQ(base->viewport, whole);
            std::optional<PlaceInPicture> const seen = project(*base, place);
            ASSERT_TRUE(seen);
            EXPECT_NEAR(seen->x - free.x, alone.x + width / 2.0, 1e-9);
            EXPECT_NEAR(seen->y - free.y, height / 2.0 - alone.y, 1e-9);
        }
        camera.toggleOrthographic();
    }
}

TEST(OrbitCamera, APartOfAnotherShapeShowsMoreAndCutsNothingOff)
{
    OrbitCamera const camera = fitted({0.0, 0.0, 1.0});
    for (quarl::Rect<int> const& free :
         {quarl::Rect<int>{0, 0, 300, 500}, quarl::Rect<int>{0, 0, 800, 100}}) {
        smart_ptr<CameraBase> const base = camera.camera(boundsOfBox(), free, free);
        for (Vector3 const& corner : box) {
            std::optional<PlaceInPicture> const seen = project(*base, corner);
            ASSERT_TRUE(seen);
            EXPECT_TRUE(seen->x > 0.0 && seen->x < free.width) << seen->x;
            EXPECT_TRUE(seen->y > 0.0 && seen->y < free.height) << seen->y;
        }
    }
}

TEST(OrbitCamera, StandardViewsShowTheSidesTheyName)
{
    OrbitCamera camera = fitted();
    std::array<std::pair<View, Vector3>, 6> const directions{{{View::front, {0.0, 0.0, -1.0}},
                                                              {View::back, {0.0, 0.0, 1.0}},
                                                              {View::left, {-1.0, 0.0, 0.0}},
                                                              {View::right, {1.0, 0.0, 0.0}},
                                                              {View::top, {0.0, -1.0, 0.0}},
                                                              {View::bottom, {0.0, 1.0, 0.0}}}};
    for (auto const& [view, direction] : directions) {
        camera.look(view, box);
        expectNear(camera.direction(), direction, 1e-12);
    }
}

TEST(OrbitCamera, DraggingToTheRightShowsTheLeftSide)
{
    OrbitCamera camera = fitted({0.0, 0.0, 1.0});
    camera.orbit(100.0, 0.0);
    EXPECT_DOUBLE_EQ(camera.azimuth(), 320.0);
    Vector3 const front = onScreen(camera, Vector3(0.0, 0.0, 0.5));
    EXPECT_GT(front.x, 1.0); // the front goes with the pointer
    camera.orbit(-100.0, 50.0);
    EXPECT_DOUBLE_EQ(camera.azimuth(), 0.0);
    EXPECT_DOUBLE_EQ(camera.elevation(), 20.0);
    EXPECT_GT(onScreen(camera, Vector3(0.0, 0.0, 0.5)).y, 1.0);
}

TEST(OrbitCamera, DoesNotTumbleOverThePoles)
{
    OrbitCamera camera = fitted();
    camera.orbit(0.0, 1e4);
    EXPECT_EQ(camera.elevation(), 90.0);
    camera.orbit(0.0, -1e5);
    EXPECT_EQ(camera.elevation(), -90.0);
}

TEST(OrbitCamera, PanMovesTheTargetWithThePointer)
{
    for (bool const orthographic : {false, true}) {
        OrbitCamera camera = fitted();
        if (orthographic)
            camera.toggleOrthographic();
        Vector3 const target = camera.target();
        camera.pan(70.0, -30.0);
        Vector3 const moved = onScreen(camera, target);
        EXPECT_NEAR(moved.x, 70.0, 1e-9);
        EXPECT_NEAR(moved.y, -30.0, 1e-9);
    }
}

TEST(OrbitCamera, ZoomKeepsWhatIsUnderThePointer)
{
    for (bool const orthographic : {false, true}) {
        OrbitCamera camera = fitted({40.0, 10.0, 1.0});
        if (orthographic)
            camera.toggleOrthographic();
        // A point in the target's plane that lies under the pointer.
        OrbitCamera probe = camera;
        probe.pan(-120.0, -60.0);
        Vector3 const point = probe.target();
        Vector3 const before = onScreen(camera, point);
        ASSERT_NEAR(before.x, 120.0, 1e-9);
        ASSERT_NEAR(before.y, 60.0, 1e-9);
        camera.zoom(2.5, 120.0, 60.0);
        Vector3 const after = onScreen(camera, point);
        EXPECT_NEAR(after.x, 120.0, 1e-9);
        EXPECT_NEAR(after.y, 60.0, 1e-9);
        double const distance =
            onScreen(camera, camera.target() + transpose(camera.rotation()) * Vector3(0.1, 0.0, 0.0)).x;
        double const unzoomed =
            onScreen(probe, probe.target() + transpose(probe.rotation()) * Vector3(0.1, 0.0, 0.0)).x;
        EXPECT_NEAR(distance / unzoomed, 2.5, 1e-6);
    }
}

TEST(OrbitCamera, ZoomHasLimits)
{
    OrbitCamera camera = fitted();
    for (int i = 0; i < 1000; ++i)
        camera.zoom(10.0, 0.0, 0.0);
    smart_ptr<CameraBase> const near = camera.camera(boundsOfBox(), viewport, viewport);
    for (int i = 0; i < 1000; ++i)
        camera.zoom(0.1, 0.0, 0.0);
    smart_ptr<CameraBase> const far = camera.camera(boundsOfBox(), viewport, viewport);
    for (smart_ptr<CameraBase> const& base : {near, far})
        for (int i = 0; i < 16; ++i) {
            EXPECT_TRUE(std::isfinite(base->projection.data()[i]));
            EXPECT_TRUE(std::isfinite(base->view.data()[i]));
        }
    EXPECT_NE(translationOf(near->view).z, translationOf(far->view).z);
}

TEST(OrbitCamera, OrthographicShowsTheTargetsPlaneAsLarge)
{
    OrbitCamera camera = fitted();
    Vector3 const beside = camera.target() + transpose(camera.rotation()) * Vector3(0.7, 0.3, 0.0);
    Vector3 const perspective = onScreen(camera, beside);
    camera.toggleOrthographic();
    Vector3 const parallel = onScreen(camera, beside);
    EXPECT_NEAR(parallel.x, perspective.x, 1e-9);
    EXPECT_NEAR(parallel.y, perspective.y, 1e-9);
    Vector3 const behind = onScreen(camera, beside + camera.direction() * 0.4);
    EXPECT_NEAR(behind.x, parallel.x, 1e-9); // nothing shrinks with its distance
}

TEST(OrbitCamera, NothingIsCutOffWhereverItLooksFrom)
{
    OrbitCamera camera = fitted();
    for (bool const orthographic : {false, true}) {
        for (int i = 0; i < 200; ++i) {
            camera.orbit(37.0, i % 2 ? 29.0 : -23.0);
            for (Vector3 const& corner : box)
                EXPECT_LT(std::abs(onScreen(camera, corner).z), 1.0);
        }
        if (!orthographic)
            camera.toggleOrthographic();
    }
}

TEST(OrbitCamera, TheAxisThatIsUpPointsUpOnTheScreen)
{
    OrbitCamera camera = fitted({25.0, 15.0, 1.0});
    std::array<Vector3, 3> const axes{{{0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}}};
    for (Vector3 const& axis : axes) {
        Vector3 const up = camera.rotation() * axis;
        EXPECT_NEAR(up.x, 0.0, 1e-12);
        EXPECT_GT(up.y, 0.9);
        camera.cycleUp(box);
    }
    EXPECT_EQ(camera.up(), OrbitCamera::Up::y);
}

TEST(OrbitCamera, ResetLeadsBackToTheStart)
{
    OrbitCamera camera = fitted({12.0, 34.0, 1.3});
    smart_ptr<CameraBase> const first = camera.camera(boundsOfBox(), viewport, viewport);
    camera.orbit(33.0, 5.0);
    camera.pan(100.0, 20.0);
    camera.zoom(3.0, 10.0, 10.0);
    camera.toggleOrthographic();
    camera.cycleUp(box);
    OrbitCamera other = camera;
    other.startOver(box);
    EXPECT_EQ(other.up(), OrbitCamera::Up::z) << "for the next model, which has its axes as this one";
    EXPECT_EQ(other.azimuth(), 12.0);
    EXPECT_FALSE(other.isOrthographic());
    camera.reset(box);
    EXPECT_EQ(camera.up(), OrbitCamera::Up::y);
    smart_ptr<CameraBase> const last = camera.camera(boundsOfBox(), viewport, viewport);
    EXPECT_EQ(last->view, first->view);
    EXPECT_EQ(last->projection, first->projection);
}

TEST(OrbitCamera, StartsAndComesBackAsTold)
{
    OrbitCamera camera = fitted({12.0, 34.0, 1.3, Up::x, true});
    EXPECT_EQ(camera.up(), Up::x);
    EXPECT_TRUE(camera.isOrthographic());
    camera.toggleOrthographic();
    camera.cycleUp(box);
    EXPECT_EQ(camera.up(), Up::y);
    camera.reset(box);
    EXPECT_EQ(camera.up(), Up::x);
    EXPECT_TRUE(camera.isOrthographic());
}

TEST(OrbitCamera, AnEmptySceneIsNoTrouble)
{
    OrbitCamera camera((CameraView()));
    camera.setArea(0.0, 0.0);
    camera.fit({});
    smart_ptr<CameraBase> const base = camera.camera(Bounds(), {0, 0, 1, 1}, {0, 0, 1, 1});
    for (int i = 0; i < 16; ++i)
        EXPECT_TRUE(std::isfinite(base->projection.data()[i]));
}

} // namespace
} // namespace sgview
