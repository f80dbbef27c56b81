#include "Maths/UVector3.h"

#include "Tests/Unit/Maths/MathsTesting.h"

#include <limits>
#include <type_traits>
#include <vector>

using MathsTesting::Random;

static_assert(std::is_convertible_v<UVector3, Vector3>);
static_assert(!std::is_convertible_v<Vector3, UVector3>, "normalising must be asked for");
static_assert(!std::is_assignable_v<UVector3&, Vector3>);
static_assert(sizeof(UVector3) == 3 * sizeof(double));

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::vector<Vector3> normals()
{
    std::vector<Vector3> all{{0, 0, 1},    {0, 0, -1},   {1, 0, 0.0},   {1, 0, -0.0},    {-1, 0, 0.0},
                             {0, 1, -0.0}, {0, -1, 0.0}, {0, -1, -0.0}, {-0.0, -0.0, -1}};
    for (double const tiny : {1e-4, 1e-8, 1e-12, 1e-16, 1e-300})
        for (double const z : {1.0, -1.0})
            for (double const sign : {1.0, -1.0}) {
                all.push_back(UVector3(sign * tiny, 0.3 * tiny, z));
                all.push_back(UVector3(z, 0.3, sign * tiny));
            }
    Random random;
    for (int i = 0; i < 10000; ++i)
        all.push_back(UVector3(random.vector()));
    return all;
}

} // namespace

TEST(UVector3, IsTheZAxisByDefault)
{
    EXPECT_EQ(UVector3(), Vector3(0, 0, 1));
}

TEST(UVector3, HasLengthOneWhateverTheSize)
{
    Random random;
    for (int exponent = -300; exponent <= 300; exponent += 5) {
        SCOPED_TRACE(exponent);
        for (int i = 0; i < 20; ++i) {
            Vector3 const direction = random.vector();
            UVector3 const u(direction * std::pow(10.0, exponent));
            EXPECT_NEAR(length(u), 1.0, 4e-16);
            EXPECT_CLOSE(static_cast<Vector3 const&>(u), direction * (1.0 / length(direction)), 1e-15);
        }
    }
}

TEST(UVector3, HasLengthOneAtTheEdgesOfTheNumberRange)
{
    double const smallest = std::numeric_limits<double>::denorm_min();
    double const largest = std::numeric_limits<double>::max();
    EXPECT_EQ(UVector3(0, smallest, 0), Vector3(0, 1, 0));
    EXPECT_EQ(UVector3(0, 0, -largest), Vector3(0, 0, -1));
    double const third = 1.0 / std::sqrt(3.0);
    EXPECT_CLOSE(Vector3(UVector3(smallest, smallest, smallest)), Vector3(third, third, third), 1e-15);
    EXPECT_CLOSE(Vector3(UVector3(largest, -largest, largest)), Vector3(third, -third, third), 1e-15);
    EXPECT_NEAR(length(UVector3(1e300, 1e-300, 0)), 1.0, 4e-16);
}

TEST(UVector3, HasNoDirectionWhereThereIsNone)
{
    EXPECT_EQ(UVector3(0, 0, 0), Vector3());
    EXPECT_EQ(UVector3(-0.0, 0, -0.0), Vector3());
    for (double const bad : {notANumber, infinite, -infinite}) {
        EXPECT_EQ(UVector3(bad, 1, 2), Vector3());
        EXPECT_EQ(UVector3(1, bad, 2), Vector3());
        EXPECT_EQ(UVector3(1, 2, bad), Vector3());
        EXPECT_EQ(UVector3(bad, bad, bad), Vector3());
    }
}

TEST(UVector3, NormalisingAgainChangesNothingToSpeakOf)
{
    Random random;
    for (int i = 0; i < 1000; ++i) {
        UVector3 const once(random.vector(100.0));
        EXPECT_CLOSE(Vector3(UVector3(once)), Vector3(once), 3e-16);
    }
}

TEST(getBasis, GivesARightHandedOrthonormalBasis)
{
    for (Vector3 const& n : normals()) {
        SCOPED_TRACE(testing::PrintToString(n));
        Vector3 a;
        Vector3 b;
        getBasis(n, a, b);
        EXPECT_NEAR(dot(a, n), 0.0, 1e-15);
        EXPECT_NEAR(dot(b, n), 0.0, 1e-15);
        EXPECT_NEAR(dot(a, b), 0.0, 1e-15);
        EXPECT_NEAR(length(a), 1.0, 1e-15);
        EXPECT_NEAR(length(b), 1.0, 1e-15);
        EXPECT_CLOSE(cross(a, b), n, 1e-15);
    }
}

TEST(getBasis, StaysFiniteForAVectorWithoutDirection)
{
    Vector3 a;
    Vector3 b;
    getBasis(UVector3(0, 0, 0), a, b);
    EXPECT_TRUE(isFinite(a));
    EXPECT_TRUE(isFinite(b));
}
