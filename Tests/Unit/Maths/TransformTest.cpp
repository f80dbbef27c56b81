#include "Maths/Transform.h"

#include "Tests/Unit/Maths/MathsTesting.h"

#include <cmath>
#include <type_traits>

using namespace MathsTesting;

static_assert(!std::is_convertible_v<Matrix, Transform>, "a matrix need not be a similarity");
static_assert(!std::is_constructible_v<Transform, Matrix>);
static_assert(!std::is_convertible_v<double, Transform>);

namespace {

Transform randomTransform(Random& random)
{
    double const scale = random.number(0.2, 3.0) * (random.number(-1, 1) < 0 ? -1.0 : 1.0);
    return Transform(Matrix3::rotationMatrix(random.vector(), random.number(-7.0, 7.0)), random.vector(5.0),
                     scale);
}

Vector3 applied(Transform const& t, Vector3 const& point)
{
    return t.getRotation() * (point * t.getScale()) + t.getTranslation();
}

} // namespace

TEST(Transform, IsTheIdentityByDefault)
{
    EXPECT_EQ(Transform().getMatrix(), Matrix());
    EXPECT_EQ(Transform().getScale(), 1.0);
}

TEST(Transform, FromAxisAndAngleOnlyRotates)
{
    Transform const t({0, 0, 4}, pi / 2);
    EXPECT_CLOSE(t.getRotation() * Vector3(1, 0, 0), Vector3(0, 1, 0), 1e-15);
    EXPECT_EQ(t.getTranslation(), Vector3());
    EXPECT_EQ(t.getScale(), 1.0);
}

TEST(Transform, MatrixScalesThenRotatesThenTranslates)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Transform const t = randomTransform(random);
        Vector3 const p = random.vector();
        EXPECT_CLOSE(transformPoint(t.getMatrix(), p), applied(t, p), 1e-14);
    }
    Transform const known(Matrix3::rotationMatrix({0, 0, 1}, pi / 2), {10, 20, 30}, 2.0);
    EXPECT_CLOSE(transformPoint(known.getMatrix(), {1, 0, 0}), Vector3(10, 22, 30), 1e-14);
}

TEST(Transform, NegativeScaleMirrorsThroughTheOrigin)
{
    Transform const mirror(Matrix3(), Vector3(), -1.0);
    EXPECT_EQ(transformPoint(mirror.getMatrix(), {1, 2, 3}), Vector3(-1, -2, -3));
    EXPECT_EQ(determinant(Matrix3(mirror.getMatrix())), -1.0);
}

TEST(Transform, ProductAgreesWithTheProductOfMatrices)
{
    Random random;
    int mirrored = 0;
    for (int i = 0; i < 1000; ++i) {
        Transform const a = randomTransform(random);
        Transform const b = randomTransform(random);
        EXPECT_CLOSE((a * b).getMatrix(), a.getMatrix() * b.getMatrix(), 1e-13);
        EXPECT_EQ((a * b).getScale(), a.getScale() * b.getScale());
        mirrored += (a * b).getScale() < 0 ? 1 : 0;
    }
    EXPECT_GT(mirrored, 300) << "negative scales are part of the test";
}

TEST(Transform, ProductWithAMatrixIsThatOfTheMatrices)
{
    Transform const transform(Matrix3::rotationMatrix({1.0, 2.0, 3.0}, 0.7), {4.0, -5.0, 6.0}, -1.5);
    Matrix const matrix(
        {1.5, -2.0, 3.0, 4.0, 5.0, 6.25, -7.0, 8.0, 9.0, 1.0, 2.0, -3.0, 0.5, 0.25, -1.0, 2.0});
    EXPECT_EQ(matrix * transform, matrix * transform.getMatrix());
    Transform const mirror(Matrix3(), {}, -1.0);
    for (double const depth : {-5.0, 5.0}) {
        Matrix const view = Matrix::translationMatrix({0.0, 0.0, depth});
        Matrix const product = view * mirror;
        Matrix const expected = view * mirror.getMatrix();
        for (int i = 0; i < 16; ++i)
            EXPECT_EQ(std::signbit(product.data()[i]), std::signbit(expected.data()[i])) << "of a zero too";
    }
}

TEST(Transform, InverseUndoes)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Transform const t = randomTransform(random);
        EXPECT_CLOSE((inverse(t) * t).getMatrix(), Matrix(), 1e-13);
        EXPECT_CLOSE((t * inverse(t)).getMatrix(), Matrix(), 1e-13);
    }
}
