#include "Viewer/Scene/Animation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace sgview;

namespace {

constexpr double pi = std::numbers::pi;

Quaternion turnAboutZ(double angle)
{
    return {0.0, 0.0, std::sin(0.5 * angle), std::cos(0.5 * angle)};
}

double angleAboutZ(Quaternion const& q)
{
    return 2.0 * std::atan2(q.z, q.w);
}

TEST(Animation, LinearTrackIsStraightBetweenKeysAndHoldsItsEnds)
{
    ModelTrack<Vector3> const track{
        Interpolation::linear, {1.0, 2.0, 4.0}, {{0, 0, 0}, {2, 0, 0}, {2, 4, 0}}};
    EXPECT_EQ(sample(track, 0.0), Vector3(0, 0, 0));
    EXPECT_EQ(sample(track, 1.25), Vector3(0.5, 0, 0));
    EXPECT_EQ(sample(track, 2.0), Vector3(2, 0, 0));
    EXPECT_EQ(sample(track, 3.0), Vector3(2, 2, 0));
    EXPECT_EQ(sample(track, 9.0), Vector3(2, 4, 0));
}

TEST(Animation, StepTrackHoldsUntilTheNextKey)
{
    ModelTrack<Vector3> const track{Interpolation::step, {0.0, 1.0}, {{1, 0, 0}, {2, 0, 0}}};
    EXPECT_EQ(sample(track, 0.999), Vector3(1, 0, 0));
    EXPECT_EQ(sample(track, 1.0), Vector3(2, 0, 0));
}

TEST(Animation, CubicTrackMeetsItsKeysAndTangents)
{
    // From 0 to 1 in 2 seconds with slope 3 at the start and -1 at the end.
    ModelTrack<Vector3> const track{Interpolation::cubic,
                                    {0.0, 2.0},
                                    {{9, 9, 9}, {0, 0, 0}, {3, 0, 0}, {-1, 0, 0}, {1, 0, 0}, {9, 9, 9}}};
    EXPECT_DOUBLE_EQ(sample(track, 0.0).x, 0.0);
    EXPECT_DOUBLE_EQ(sample(track, 2.0).x, 1.0);
    EXPECT_DOUBLE_EQ(sample(track, 1.0).x, 0.5 + 2.0 * (3.0 - -1.0) / 8.0);
    double const h = 1e-6;
    EXPECT_NEAR((sample(track, h).x - sample(track, 0.0).x) / h, 3.0, 1e-4);
    EXPECT_NEAR((sample(track, 2.0).x - sample(track, 2.0 - h).x) / h, -1.0, 1e-4);
}

TEST(Animation, RotationTurnsAtConstantSpeedAlongTheShorterArc)
{
    Quaternion const end = turnAboutZ(0.5 * pi);
    Quaternion const sameEnd{-end.x, -end.y, -end.z, -end.w};
    for (Quaternion const& last : {end, sameEnd}) {
        ModelTrack<Quaternion> const track{Interpolation::linear, {0.0, 1.0}, {turnAboutZ(0.0), last}};
        EXPECT_NEAR(angleAboutZ(sample(track, 0.25)), 0.125 * pi, 1e-14);
        EXPECT_NEAR(angleAboutZ(sample(track, 0.5)), 0.25 * pi, 1e-14);
    }
}

TEST(Animation, RotationsComeOutWithUnitLengthWhateverTheKeysAre)
{
    ModelTrack<Quaternion> const track{Interpolation::linear, {0.0, 1.0}, {{0, 0, 0, 2}, {0, 0, 0, 0}}};
    for (double const seconds : {-1.0, 0.0, 0.3, 1.0}) {
        Quaternion const q = sample(track, seconds);
        EXPECT_DOUBLE_EQ(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w, 1.0);
    }
}

TEST(Animation, RotationOfAQuaternionIsTheRotationAboutItsAxis)
{
    Vector3 const axis(0.36, -0.48, 0.8);
    double const angle = 1.1;
    Quaternion const q{axis.x * std::sin(0.5 * angle), axis.y * std::sin(0.5 * angle),
                       axis.z * std::sin(0.5 * angle), std::cos(0.5 * angle)};
    Matrix3 const expected = Matrix3::rotationMatrix(axis, angle);
    for (int i = 0; i < 9; ++i)
        EXPECT_NEAR(rotationOf(q)[i], expected[i], 1e-15);
}

TEST(Animation, PosedNodesFollowTheirParents)
{
    Model model;
    model.nodes.resize(2);
    model.nodes[0].rotation = turnAboutZ(0.5 * pi);
    model.nodes[0].scale = Vector3(2, 2, 2);
    model.nodes[1].parent = 0;
    model.nodes[1].translation = Vector3(1, 0, 0);
    ModelAnimation clip;
    clip.length = 1.0;
    clip.channels.push_back({1, {Interpolation::linear, {0.0, 1.0}, {{1, 0, 0}, {3, 0, 0}}}, {}, {}});
    model.animations.push_back(clip);

    Vector3 const atRest = translationOf(poseNodes(model, none, 0.5)[1]);
    Vector3 const posed = translationOf(poseNodes(model, 0, 0.5)[1]);
    EXPECT_NEAR(length(atRest - Vector3(0, 2, 0)), 0.0, 1e-15);
    EXPECT_NEAR(length(posed - Vector3(0, 4, 0)), 0.0, 1e-15);
}

TEST(Animation, AMatrixHoldsWhereNoChannelMovesTheNode)
{
    Model model;
    model.nodes.resize(1);
    model.nodes[0].hasMatrix = true;
    model.nodes[0].matrix = Matrix({1, 0.5, 0, 7, 0, 1, 0, 8, 0, 0, 1, 9, 0, 0, 0, 1});
    EXPECT_EQ(poseNodes(model, none, 0.0)[0], model.nodes[0].matrix);
}

} // namespace
