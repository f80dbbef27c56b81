#include "Viewer/Import/Normals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace sgview {

namespace {

/// Two triangles that share the edge from (0, 0, 0) to (0, 1, 0) and meet there at `angle`.
ModelSurface fold(double angle)
{
    ModelSurface surface;
    surface.positions = {{0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {std::cos(angle), 0, -std::sin(angle)}};
    surface.facets = {0, 1, 2, 0, 3, 1};
    surface.coordinates = {{{0, 0}, {1, 1}, {2, 2}, {3, 3}}};
    surface.influenceOffsets = {0, 1, 2, 3, 4};
    surface.influences = {{0, 1.0}, {1, 1.0}, {2, 1.0}, {3, 1.0}};
    return surface;
}

double constexpr degree = 3.14159265358979323846 / 180.0;

} // namespace

TEST(Normals, AreSmoothBelowTheCrease)
{
    ModelSurface surface = fold(40 * degree);
    makeNormals(surface, 0.5);
    ASSERT_EQ(surface.positions.size(), 4U);
    EXPECT_NEAR(length(surface.normals[0]), 1.0, 1e-12);
    EXPECT_NEAR(surface.normals[0].x, std::sin(20 * degree), 1e-12);
    EXPECT_NEAR(surface.normals[0].z, std::cos(20 * degree), 1e-12);
}

TEST(Normals, DoubleTheVerticesOfASharpEdge)
{
    ModelSurface surface = fold(90 * degree);
    makeNormals(surface, 0.5);
    ASSERT_EQ(surface.positions.size(), 6U);
    EXPECT_EQ(surface.normals.size(), 6U);
    EXPECT_EQ(surface.coordinates[0].size(), 6U);
    ASSERT_EQ(surface.influenceOffsets.size(), 7U);
    for (std::size_t corner = 0; corner < 6; ++corner) {
        auto const vertex = static_cast<std::size_t>(surface.facets[corner]);
        Vector3 const expected = corner < 3 ? Vector3(0, 0, 1) : Vector3(1, 0, 0);
        EXPECT_NEAR(dot(surface.normals[vertex], expected), 1.0, 1e-12) << corner;
        // What belonged to the vertex came along: its coordinates and its bone are its number.
        double const number = surface.coordinates[0][vertex][0];
        EXPECT_EQ(surface.influences[static_cast<std::size_t>(surface.influenceOffsets[vertex])].bone,
                  number);
        EXPECT_EQ(surface.positions[vertex], fold(90 * degree).positions[static_cast<std::size_t>(number)]);
    }
}

TEST(Normals, CountVerticesAtOnePlaceAsOne)
{
    ModelSurface surface = fold(40 * degree);
    surface.positions.insert(surface.positions.end(), {surface.positions[0], surface.positions[1]});
    surface.facets = {0, 1, 2, 4, 3, 5};
    surface.coordinates.clear();
    surface.influenceOffsets.clear();
    surface.influences.clear();
    makeNormals(surface, 0.5);
    EXPECT_NEAR(surface.normals[static_cast<std::size_t>(surface.facets[0])].x, std::sin(20 * degree), 1e-12);
}

TEST(Normals, OfFacetsWithoutAreaHaveLengthOne)
{
    ModelSurface surface;
    surface.positions.assign(3, {1, 1, 1});
    surface.facets = {0, 1, 2};
    makeNormals(surface, 0.5);
    for (Vector3 const& normal : surface.normals)
        EXPECT_NEAR(length(normal), 1.0, 1e-12);
}

TEST(Normals, AreRepaired)
{
    ModelSurface surface = fold(0);
    surface.normals = {
        {0, 0, 0}, {std::numeric_limits<double>::quiet_NaN(), 0, 0}, {0, 0, 5}, {0, 0, 1e-200}};
    EXPECT_EQ(repairNormals(surface), 2U);
    for (Vector3 const& normal : surface.normals)
        EXPECT_NEAR(normal.z, 1.0, 1e-12);
}

TEST(Normals, AreTurnedWhereMostFacetsShowThemTheirBack)
{
    ModelSurface surface;
    surface.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    surface.normals.assign(4, {0, 0, 1});
    surface.facets = {0, 1, 2, 1, 2, 3};
    EXPECT_FALSE(turnOpposedNormals(surface)) << "as many with as against: a sheet seen from both sides";
    surface.facets.insert(surface.facets.end(), {2, 1, 0, 0, 1, 1});
    EXPECT_TRUE(turnOpposedNormals(surface));
    EXPECT_EQ(surface.normals, std::vector<Vector3>(4, {0, 0, -1}));
    EXPECT_FALSE(turnOpposedNormals(surface));
}

} // namespace sgview
