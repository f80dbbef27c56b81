#include "Viewer/Scene/SimilaritySplit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace sgview;

namespace {

Matrix joined(SimilaritySplit const& split)
{
    return split.outer.getMatrix() * Matrix(split.inner, Vector3());
}

double largestDifference(Matrix const& a, Matrix const& b)
{
    double largest = 0.0;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            largest = std::fmax(largest, std::abs(a(row, column) - b(row, column)));
    return largest;
}

Matrix3 scaling(double x, double y, double z)
{
    return Matrix3({x, 0, 0, 0, y, 0, 0, 0, z});
}

TEST(SimilaritySplit, LeavesNothingOfASimilarityToTheGeometry)
{
    for (double const scale : {1.0, 0.001, 2.5e6, -1.0, -0.3}) {
        Matrix const map = Transform(Matrix3::rotationMatrix({1, 2, 3}, 0.7), {4, 5, 6}, scale).getMatrix();
        SimilaritySplit const split = splitSimilarity(map);
        EXPECT_EQ(split.inner, Matrix3());
        EXPECT_NEAR(split.outer.getScale(), scale, 1e-12 * std::abs(scale));
        EXPECT_LT(largestDifference(joined(split), map), 1e-12 * std::abs(scale) + 1e-14);
    }
}

TEST(SimilaritySplit, JoinsToTheMapItCameFrom)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> element(-3.0, 3.0);
    for (int i = 0; i < 1000; ++i) {
        Matrix map;
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 4; ++column)
                map(row, column) = element(random);
        SimilaritySplit const split = splitSimilarity(map);
        EXPECT_LT(largestDifference(joined(split), map), 1e-10);
        EXPECT_GT(determinant(split.inner), 0.0);
        EXPECT_EQ(split.outer.getScale() < 0.0, determinant(Matrix3(map)) < 0.0);
    }
}

TEST(SimilaritySplit, KeepsTheStretchingOfATurningThing)
{
    Matrix3 const stretching = scaling(1.0, 2.0, 0.5);
    Matrix3 const inner = splitSimilarity(Matrix(stretching, {})).inner;
    for (double const angle : {0.3, 1.9, 4.0}) {
        Matrix3 const turned =
            splitSimilarity(Matrix(Matrix3::rotationMatrix({0.2, -1.0, 0.5}, angle) * stretching, {})).inner;
        for (int i = 0; i < 9; ++i)
            EXPECT_NEAR(turned[i], inner[i], 1e-14);
    }
}

TEST(SimilaritySplit, SurvivesMapsWithoutAnInverse)
{
    for (Matrix3 const& flat :
         {scaling(1, 0, 1), scaling(0, 0, 0), scaling(1e-200, 1e-200, 1e-200), scaling(0, 0, 5)}) {
        SimilaritySplit const split = splitSimilarity(Matrix(flat, {1, 2, 3}));
        EXPECT_NE(split.outer.getScale(), 0.0);
        EXPECT_LT(largestDifference(joined(split), Matrix(flat, {1, 2, 3})), 1e-12);
    }
}

TEST(SimilaritySplit, CollapsesWhatIsNotFinite)
{
    Matrix map;
    map(1, 1) = std::numeric_limits<double>::quiet_NaN();
    SimilaritySplit const split = splitSimilarity(map);
    EXPECT_EQ(split.outer, Transform());
    EXPECT_EQ(split.inner * Vector3(1, 2, 3), Vector3());
}

TEST(SimilaritySplit, RelativeTransformLeadsFromParentToChild)
{
    Transform const parent(Matrix3::rotationMatrix({1, 0, 1}, 0.4), {1, 2, 3}, -2.0);
    Transform const child(Matrix3::rotationMatrix({0, 1, 1}, 2.4), {-4, 5, 6}, 0.5);
    Transform const reached = parent * relativeTransform(parent, child);
    EXPECT_LT(largestDifference(reached.getMatrix(), child.getMatrix()), 1e-14);
}

} // namespace
