#include "Maths/Vector3.h"

#include "Tests/Unit/Maths/MathsTesting.h"

#include <limits>
#include <type_traits>

using MathsTesting::Random;

static_assert(!std::is_convertible_v<double, Vector3>);
static_assert(!std::is_constructible_v<Vector3, double, double>);
static_assert(cross(Vector3(1, 0, 0), Vector3(0, 1, 0)) == Vector3(0, 0, 1));
static_assert(dot(Vector3(1, 2, 3), Vector3(4, -5, 6)) == 12.0);

TEST(Vector3, StartsAtTheOrigin)
{
    EXPECT_EQ(Vector3(), Vector3(0.0, 0.0, 0.0));
}

TEST(Vector3, IndexGivesComponentsInOrder)
{
    Vector3 const v(1.5, 2.5, 3.5);
    EXPECT_EQ(v[0], 1.5);
    EXPECT_EQ(v[1], 2.5);
    EXPECT_EQ(v[2], 3.5);
}

TEST(Vector3, ArithmeticIsByComponent)
{
    Vector3 const a(1, 2, 3);
    Vector3 const b(10, 20, 40);
    EXPECT_EQ(a + b, Vector3(11, 22, 43));
    EXPECT_EQ(b - a, Vector3(9, 18, 37));
    EXPECT_EQ(-a, Vector3(-1, -2, -3));
    EXPECT_EQ(a * 3.0, Vector3(3, 6, 9));
    EXPECT_EQ(3.0 * a, a * 3.0);
}

TEST(Vector3, CompoundAssignmentGivesTheObjectItself)
{
    Vector3 v(1, 2, 3);
    EXPECT_EQ(&(v += Vector3(1, 1, 1)), &v);
    EXPECT_EQ(&(v -= Vector3(0, 1, 2)), &v);
    EXPECT_EQ(&(v *= 2.0), &v);
    EXPECT_EQ(v, Vector3(4, 4, 4));
}

TEST(Vector3, EqualityLooksAtEveryComponent)
{
    Vector3 const v(1, 2, 3);
    EXPECT_NE(v, Vector3(0, 2, 3));
    EXPECT_NE(v, Vector3(1, 0, 3));
    EXPECT_NE(v, Vector3(1, 2, 0));
}

TEST(Vector3, CrossProductIsPerpendicularAndRightHanded)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        Vector3 const a = random.vector();
        Vector3 const b = random.vector();
        Vector3 const c = cross(a, b);
        EXPECT_NEAR(dot(c, a), 0.0, 1e-15);
        EXPECT_NEAR(dot(c, b), 0.0, 1e-15);
        // Lagrange's identity: |a x b|^2 = |a|^2 |b|^2 - (a.b)^2
        EXPECT_NEAR(dot(c, c), dot(a, a) * dot(b, b) - dot(a, b) * dot(a, b), 1e-14);
        EXPECT_EQ(cross(b, a), -c);
    }
}

TEST(Vector3, LengthNeitherOverflowsNorUnderflows)
{
    EXPECT_DOUBLE_EQ(length(Vector3(2, -3, 6)), 7.0);
    EXPECT_DOUBLE_EQ(length(Vector3(2e200, -3e200, 6e200)), 7e200);
    EXPECT_DOUBLE_EQ(length(Vector3(2e-200, -3e-200, 6e-200)), 7e-200);
    EXPECT_EQ(length(Vector3()), 0.0);
}

TEST(Vector3, IsFiniteLooksAtEveryComponent)
{
    double const inf = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(isFinite(Vector3(1e308, -1e308, 0)));
    for (double const bad : {inf, -inf, nan}) {
        EXPECT_FALSE(isFinite(Vector3(bad, 0, 0)));
        EXPECT_FALSE(isFinite(Vector3(0, bad, 0)));
        EXPECT_FALSE(isFinite(Vector3(0, 0, bad)));
    }
}
