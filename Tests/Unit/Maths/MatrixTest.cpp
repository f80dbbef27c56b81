#include "Maths/Matrix.h"

#include "Tests/Unit/Maths/MathsTesting.h"

#include <array>
#include <type_traits>

using namespace MathsTesting;

static_assert(!std::is_convertible_v<double, Matrix>);
static_assert(!std::is_convertible_v<std::array<double, 16>, Matrix>);
static_assert(!std::is_convertible_v<Matrix3, Matrix>);
static_assert(Matrix()(2, 2) == 1.0);

namespace {

using Column = std::array<double, 4>;

Column times(Matrix const& m, Column const& v)
{
    Column result{};
    for (int row = 0; row < 4; ++row)
        for (int i = 0; i < 4; ++i)
            result[static_cast<std::size_t>(row)] += m(row, i) * v[static_cast<std::size_t>(i)];
    return result;
}

/// A point through a projection, divided by w: normalised device coordinates.
Vector3 projected(Matrix const& m, Vector3 const& point)
{
    Column const clip = times(m, {point.x, point.y, point.z, 1.0});
    return {clip[0] / clip[3], clip[1] / clip[3], clip[2] / clip[3]};
}

} // namespace

TEST(Matrix, IsTheIdentityByDefault)
{
    EXPECT_EQ(Matrix(), Matrix({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST(Matrix, IsStoredRowByRow)
{
    Matrix m({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
    EXPECT_EQ(m(0, 3), 3.0);
    EXPECT_EQ(m(3, 0), 12.0);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(m.data()[i], i);
    m(1, 2) = 60.0;
    EXPECT_EQ(m.data()[6], 60.0);
}

TEST(Matrix, FromLinearPartAndTranslationIsAffine)
{
    Matrix const m(Matrix3({1, 2, 3, 4, 5, 6, 7, 8, 9}), Vector3(10, 20, 30));
    EXPECT_EQ(m, Matrix({1, 2, 3, 10, 4, 5, 6, 20, 7, 8, 9, 30, 0, 0, 0, 1}));
    EXPECT_EQ(translationOf(m), Vector3(10, 20, 30));
}

TEST(Matrix, ProductAgreesWithApplyingOneAfterTheOther)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Matrix const a = random.matrix();
        Matrix const b = random.matrix();
        Column const v{random.number(-1, 1), random.number(-1, 1), random.number(-1, 1),
                       random.number(-1, 1)};
        Column const together = times(a * b, v);
        Column const inTurn = times(a, times(b, v));
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_NEAR(together[k], inTurn[k], 1e-13);
    }
}

TEST(Matrix, TransposeSwapsRowsAndColumns)
{
    Random random;
    Matrix const m = random.matrix();
    Matrix const t = transpose(m);
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_EQ(t(row, column), m(column, row));
}

TEST(Matrix, TranslationMovesPoints)
{
    EXPECT_EQ(transformPoint(Matrix::translationMatrix({10, 20, 30}), {1, 2, 3}), Vector3(11, 22, 33));
}

TEST(Matrix, RotationIsCounterClockwiseWhenTheAxisPointsAtTheViewer)
{
    double const quarter = pi / 2;
    EXPECT_CLOSE(transformPoint(Matrix::rotationMatrix({0, 0, 5}, quarter), {1, 0, 7}), Vector3(0, 1, 7),
                 1e-15);
    EXPECT_CLOSE(transformPoint(Matrix::rotationMatrix({0, 3, 0}, quarter), {0, 7, 1}), Vector3(1, 7, 0),
                 1e-15);
    EXPECT_CLOSE(transformPoint(Matrix::rotationMatrix({2, 0, 0}, quarter), {7, 1, 0}), Vector3(7, 0, 1),
                 1e-15);
    EXPECT_EQ(Matrix::rotationMatrix({0, 0, 0}, 1.0), Matrix());
}

TEST(Matrix, TransformPointAgreesWithTheFullProduct)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Matrix const m(random.matrix3(), random.vector());
        Vector3 const p = random.vector();
        EXPECT_CLOSE(transformPoint(m, p), projected(m, p), 1e-14);
    }
}

TEST(Matrix, FrustumMapsItsCornersToThoseOfTheCube)
{
    double const near = 2.0;
    double const far = 50.0;
    Matrix const m = Matrix::frustum(-1.0, 3.0, -0.5, 2.5, near, far);
    EXPECT_CLOSE(projected(m, {-1.0, -0.5, -near}), Vector3(-1, -1, -1), 1e-14);
    EXPECT_CLOSE(projected(m, {3.0, -0.5, -near}), Vector3(1, -1, -1), 1e-14);
    EXPECT_CLOSE(projected(m, {-1.0, 2.5, -near}), Vector3(-1, 1, -1), 1e-14);
    double const spread = far / near;
    EXPECT_CLOSE(projected(m, {3.0 * spread, 2.5 * spread, -far}), Vector3(1, 1, 1), 1e-14);
    EXPECT_CLOSE(projected(m, {-1.0 * spread, -0.5 * spread, -far}), Vector3(-1, -1, 1), 1e-14);
    EXPECT_EQ(times(m, {0, 0, -7.0, 1})[3], 7.0) << "w is the distance in front of the eye";
}

TEST(Matrix, OrthographicMapsItsCornersToThoseOfTheCube)
{
    Matrix const m = Matrix::orthographic(-1.0, 3.0, -0.5, 2.5, 2.0, 50.0);
    EXPECT_CLOSE(projected(m, {-1.0, -0.5, -2.0}), Vector3(-1, -1, -1), 1e-14);
    EXPECT_CLOSE(projected(m, {3.0, 2.5, -50.0}), Vector3(1, 1, 1), 1e-14);
    EXPECT_CLOSE(projected(m, {1.0, 1.0, -26.0}), Vector3(0, 0, 0), 1e-14);
    EXPECT_EQ(times(m, {5, 6, 7, 1})[3], 1.0);
}
