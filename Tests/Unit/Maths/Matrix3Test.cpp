#include "Maths/Matrix3.h"

#include "Tests/Unit/Maths/MathsTesting.h"

#include <type_traits>

using namespace MathsTesting;

static_assert(!std::is_convertible_v<double, Matrix3>);
static_assert(!std::is_convertible_v<std::array<double, 9>, Matrix3>);
static_assert(!std::is_convertible_v<Matrix, Matrix3>, "dropping a translation must be asked for");
static_assert(determinant(Matrix3()) == 1.0);
static_assert(Matrix3() * Vector3(1, 2, 3) == Vector3(1, 2, 3));

namespace {

double element(Matrix3 const& m, int row, int column)
{
    return m[3 * row + column];
}

/// Sarrus' rule, unlike the expansion under test.
double sarrus(Matrix3 const& m)
{
    double sum = 0.0;
    for (int i = 0; i < 3; ++i)
        sum += element(m, 0, i) * element(m, 1, (i + 1) % 3) * element(m, 2, (i + 2) % 3) -
               element(m, 0, i) * element(m, 1, (i + 2) % 3) * element(m, 2, (i + 1) % 3);
    return sum;
}

/// Inverse by Gauss-Jordan elimination with pivoting.
Matrix3 eliminated(Matrix3 m)
{
    Matrix3 inverse;
    auto const swapRows = [](Matrix3& a, int i, int j) {
        for (int k = 0; k < 3; ++k)
            std::swap(a[3 * i + k], a[3 * j + k]);
    };
    auto const addRow = [](Matrix3& a, int to, int from, double factor) {
        for (int k = 0; k < 3; ++k)
            a[3 * to + k] += factor * a[3 * from + k];
    };
    for (int column = 0; column < 3; ++column) {
        int pivot = column;
        for (int row = column + 1; row < 3; ++row)
            if (std::abs(element(m, row, column)) > std::abs(element(m, pivot, column)))
                pivot = row;
        swapRows(m, column, pivot);
        swapRows(inverse, column, pivot);
        double const scale = 1.0 / element(m, column, column) - 1.0;
        addRow(inverse, column, column, scale);
        addRow(m, column, column, scale);
        for (int row = 0; row < 3; ++row)
            if (row != column) {
                double const factor = -element(m, row, column);
                addRow(inverse, row, column, factor);
                addRow(m, row, column, factor);
            }
    }
    return inverse;
}

} // namespace

TEST(Matrix3, IsTheIdentityByDefault)
{
    EXPECT_EQ(Matrix3(), Matrix3({1, 0, 0, 0, 1, 0, 0, 0, 1}));
}

TEST(Matrix3, IsStoredRowByRowAndActsOnColumns)
{
    Matrix3 const m({1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_EQ(m[1], 2.0);
    EXPECT_EQ(m[3], 4.0);
    EXPECT_EQ(m * Vector3(1, 0, 0), Vector3(1, 4, 7));
    EXPECT_EQ(m * Vector3(0, 1, 0), Vector3(2, 5, 8));
    EXPECT_EQ(m * Vector3(0, 0, 1), Vector3(3, 6, 9));
}

TEST(Matrix3, TakesTheUpperLeftOfAMatrix)
{
    Matrix const m({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    EXPECT_EQ(Matrix3(m), Matrix3({1, 2, 3, 5, 6, 7, 9, 10, 11}));
}

TEST(Matrix3, ProductAppliesTheRightFactorFirst)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Matrix3 const a = random.matrix3();
        Matrix3 const b = random.matrix3();
        Vector3 const v = random.vector();
        EXPECT_CLOSE((a * b) * v, a * (b * v), 1e-13);
    }
}

TEST(Matrix3, TimesANumberScalesEveryElement)
{
    EXPECT_EQ(Matrix3({1, 2, 3, 4, 5, 6, 7, 8, 9}) * 2.0, Matrix3({2, 4, 6, 8, 10, 12, 14, 16, 18}));
}

TEST(Matrix3, TransposeSwapsRowsAndColumns)
{
    EXPECT_EQ(transpose(Matrix3({1, 2, 3, 4, 5, 6, 7, 8, 9})), Matrix3({1, 4, 7, 2, 5, 8, 3, 6, 9}));
}

TEST(Matrix3, DeterminantAgreesWithSarrus)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Matrix3 const m = random.matrix3();
        EXPECT_NEAR(determinant(m), sarrus(m), 1e-13);
    }
}

TEST(Matrix3, CofactorsAreDeterminantTimesTransposedInverse)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Matrix3 const m = random.matrix3();
        double const det = sarrus(m);
        if (std::abs(det) < 0.1)
            continue;
        EXPECT_CLOSE(cofactors(m), transpose(eliminated(m)) * det, 1e-11);
    }
}

TEST(Matrix3, CofactorsTurnNormalsAsTheMatrixTurnsTangents)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Matrix3 const m = random.matrix3();
        Vector3 const s = random.vector();
        Vector3 const t = random.vector();
        EXPECT_CLOSE(cofactors(m) * cross(s, t), cross(m * s, m * t), 1e-12);
    }
    Matrix3 const flat({1, 0, 0, 0, 1, 0, 0, 0, 0});
    EXPECT_EQ(cofactors(flat) * Vector3(0, 0, 1), Vector3(0, 0, 1)) << "also where there is no inverse";
}

TEST(rotation, IsCounterClockwiseWhenTheAxisPointsAtTheViewer)
{
    double const quarter = pi / 2;
    EXPECT_CLOSE(Matrix3::rotationMatrix({0, 0, 1}, quarter) * Vector3(1, 0, 0), Vector3(0, 1, 0), 1e-15);
    EXPECT_CLOSE(Matrix3::rotationMatrix({1, 0, 0}, quarter) * Vector3(0, 1, 0), Vector3(0, 0, 1), 1e-15);
    EXPECT_CLOSE(Matrix3::rotationMatrix({0, 1, 0}, quarter) * Vector3(0, 0, 1), Vector3(1, 0, 0), 1e-15);
}

TEST(rotation, AgreesWithRodriguesOnVectors)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Vector3 const axis = random.vector(10.0);
        double const angle = random.number(-7.0, 7.0);
        Vector3 const v = random.vector();
        Vector3 const k = axis * (1.0 / length(axis));
        Vector3 const turned =
            v * std::cos(angle) + cross(k, v) * std::sin(angle) + k * (dot(k, v) * (1.0 - std::cos(angle)));
        EXPECT_CLOSE(Matrix3::rotationMatrix(axis, angle) * v, turned, 1e-14);
    }
}

TEST(rotation, KeepsLengthsAndHandedness)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Matrix3 const r = Matrix3::rotationMatrix(random.vector(), random.number(-7.0, 7.0));
        EXPECT_CLOSE(r * transpose(r), Matrix3(), 3e-15);
        EXPECT_NEAR(determinant(r), 1.0, 2e-15);
    }
}

TEST(rotation, AboutNoAxisIsTheIdentity)
{
    EXPECT_EQ(Matrix3::rotationMatrix({0, 0, 0}, 1.0), Matrix3());
}
