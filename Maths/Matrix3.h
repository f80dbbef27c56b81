#pragma once

#include "Maths/Vector3.h"

#include <array>

class Matrix;

/// A 3x3 matrix of 64-bit floats, stored row by row, acting on column vectors.
///
///     | m[0] m[1] m[2] |
///     | m[3] m[4] m[5] |
///     | m[6] m[7] m[8] |
class Matrix3 {
public:
    /// The identity.
    constexpr Matrix3() = default;

    /// Nine elements, row by row.
    constexpr explicit Matrix3(std::array<double, 9> const& rowMajor) : m(rowMajor) {}

    /// The upper left 3x3 part.
    explicit Matrix3(Matrix const& matrix);

    /// Rotation about an axis through the origin (Rodrigues' formula).
    /// \param axis   any length but 0, which gives the identity
    /// \param angle  radians, counter-clockwise when the axis points at the viewer
    [[nodiscard]] static Matrix3 rotationMatrix(Vector3 const& axis, double angle);

    /// Element `i` of the nine, row by row; `i` is not checked.
    constexpr double operator[](int i) const { return m[static_cast<std::size_t>(i)]; }
    constexpr double& operator[](int i) { return m[static_cast<std::size_t>(i)]; }

    constexpr bool operator==(Matrix3 const&) const = default;

private:
    std::array<double, 9> m{1, 0, 0, 0, 1, 0, 0, 0, 1};
};

constexpr Vector3 operator*(Matrix3 const& a, Vector3 const& v)
{
    return {a[0] * v.x + a[1] * v.y + a[2] * v.z, a[3] * v.x + a[4] * v.y + a[5] * v.z,
            a[6] * v.x + a[7] * v.y + a[8] * v.z};
}

/// The product that applies `b` first.
[[nodiscard]] Matrix3 operator*(Matrix3 const& a, Matrix3 const& b);
[[nodiscard]] Matrix3 operator*(Matrix3 const& a, double s);

[[nodiscard]] Matrix3 transpose(Matrix3 const& a);

/// By expansion along the first row.
[[nodiscard]] constexpr double determinant(Matrix3 const& a)
{
    return a[0] * (a[4] * a[8] - a[5] * a[7]) - a[1] * (a[3] * a[8] - a[5] * a[6]) +
           a[2] * (a[3] * a[7] - a[4] * a[6]);
}

/// The matrix of cofactors: determinant times the transposed inverse. It turns normals as `a` turns tangents,
/// also where `a` has no inverse.
[[nodiscard]] Matrix3 cofactors(Matrix3 const& a);
