#pragma once

#include "Maths/Matrix.h"
#include "Maths/Matrix3.h"
#include "Maths/Vector3.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <random>

/// What tests of the maths library share: reproducible random values and comparisons within a tolerance.
namespace MathsTesting {

constexpr double pi = std::numbers::pi;

class Random {
public:
    double number(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    Vector3 vector(double size = 1.0)
    {
        return {number(-size, size), number(-size, size), number(-size, size)};
    }
    Matrix3 matrix3()
    {
        Matrix3 result;
        for (int i = 0; i < 9; ++i)
            result[i] = number(-2.0, 2.0);
        return result;
    }
    Matrix matrix()
    {
        Matrix result;
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                result(row, column) = number(-2.0, 2.0);
        return result;
    }

private:
    std::mt19937 engine_{20240607};
};

inline double distance(Vector3 const& a, Vector3 const& b)
{
    return std::max({std::abs(a.x - b.x), std::abs(a.y - b.y), std::abs(a.z - b.z)});
}

inline double distance(Matrix3 const& a, Matrix3 const& b)
{
    double largest = 0.0;
    for (int i = 0; i < 9; ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

inline double distance(Matrix const& a, Matrix const& b)
{
    double largest = 0.0;
    for (int i = 0; i < 16; ++i)
        largest = std::max(largest, std::abs(a.data()[i] - b.data()[i]));
    return largest;
}

} // namespace MathsTesting

inline void PrintTo(Vector3 const& v, std::ostream* out)
{
    *out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}

inline void PrintTo(Matrix const& m, std::ostream* out)
{
    for (int row = 0; row < 4; ++row)
        *out << "\n  | " << m(row, 0) << ' ' << m(row, 1) << ' ' << m(row, 2) << ' ' << m(row, 3) << " |";
}

inline void PrintTo(Matrix3 const& m, std::ostream* out)
{
    for (int row = 0; row < 3; ++row)
        *out << "\n  | " << m[3 * row] << ' ' << m[3 * row + 1] << ' ' << m[3 * row + 2] << " |";
}

/// Compares component by component; a NaN anywhere fails.
#define EXPECT_CLOSE(actual, expected, tolerance)                                                            \
    EXPECT_PRED_FORMAT3(MathsTesting::isClose, actual, expected, tolerance)

namespace MathsTesting {

template <typename T>
testing::AssertionResult isClose(char const* actualText, char const* expectedText, char const*,
                                 T const& actual, T const& expected, double tolerance)
{
    double const error = distance(actual, expected);
    // std::max passes over a NaN, so what is equal to nothing is looked for by itself.
    if (error <= tolerance && actual == actual)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << actualText << " is " << testing::PrintToString(actual) << "\nand "
                                       << expectedText << " is " << testing::PrintToString(expected)
                                       << "\nwhich differ by " << error << ", more than " << tolerance;
}

} // namespace MathsTesting
