#include "OpenGLRenderer/DiagnosticScene.h"
#include "Tests/Unit/Maths/MathsTesting.h"

#include <cmath>

namespace {

constexpr double tolerance = 1e-14;

std::size_t vertexAt(int i, int j)
{
    return static_cast<std::size_t>(100 * i + j);
}

} // namespace

TEST(DiagnosticSurface, IsARippledSquareOfAHundredByAHundredVertices)
{
    auto const surface = Diagnostic::createRandomSurface();
    ASSERT_EQ(surface->vertices.size(), 10'000U);
    EXPECT_CLOSE(surface->vertices[0], Vector3(-0.15, -0.15, 0.0), tolerance);
    EXPECT_CLOSE(surface->vertices[101],
                 Vector3(0.3 * (0.01 - 0.5), 0.3 * (0.01 - 0.5), 0.0015 * std::sin(38.0)), tolerance);
    for (int i = 0; i < 100; ++i)
        for (int j = 0; j < 100; ++j)
            EXPECT_CLOSE(surface->vertices[vertexAt(i, j)],
                         Vector3(0.003 * i - 0.15, 0.003 * j - 0.15, 0.0015 * std::sin(37.0 * j + i)),
                         tolerance);
}

TEST(DiagnosticSurface, HasNormalsThatLeanTowardsTheViewer)
{
    auto const surface = Diagnostic::createRandomSurface();
    ASSERT_EQ(surface->normals.size(), 10'000U);
    for (int i = 0; i < 100; ++i) {
        for (int j = 0; j < 100; ++j) {
            Vector3 const leaning{0.5 * std::sin(17.0 * j + 5.0 * i + 2.0),
                                  0.5 * std::sin(19.0 * j + 7.0 * i + 3.0),
                                  std::fabs(5.0 * std::sin(23.0 * j + 11.0 * i + 4.0))};
            double const length = std::sqrt(dot(leaning, leaning));
            EXPECT_CLOSE(Vector3(surface->normals[vertexAt(i, j)]), leaning * (1.0 / length), tolerance);
        }
    }
}

TEST(DiagnosticSurface, HasTwoTrianglesACell)
{
    auto const surface = Diagnostic::createRandomSurface();
    std::vector<std::int32_t> expected;
    for (int start = 0; start <= 9'800; start += 100)
        for (int k = start; k <= start + 98; ++k)
            for (int const corner : {k, k + 1, k + 100, k + 1, k + 101, k + 100})
                expected.push_back(corner);
    EXPECT_EQ(expected.size(), 58'806U);
    EXPECT_TRUE(surface->facets == expected);
}
