#pragma once

#include "Maths/Matrix3.h"
#include "Maths/Vector3.h"

#include <array>

/// A 4x4 matrix of 64-bit floats, stored row by row, acting on column vectors: a product `a * b` applies `b`
/// first. OpenGL stores columns, so a matrix is transposed on its way there.
class Matrix {
public:
    /// The identity.
    constexpr Matrix() = default;

    /// Sixteen elements, row by row.
    constexpr explicit Matrix(std::array<double, 16> const& rowMajor) : m(rowMajor) {}

    /// An affine map: `linear` in the upper left, `translation` in the last column.
    Matrix(Matrix3 const& linear, Vector3 const& translation);

    [[nodiscard]] static Matrix translationMatrix(Vector3 const& translation);

    /// Rotation about an axis through the origin.
    /// \param axis   any length but 0, which gives the identity
    /// \param angle  radians, counter-clockwise when the axis points at the viewer
    [[nodiscard]] static Matrix rotationMatrix(Vector3 const& axis, double angle);

    /// Perspective projection of a view volume, as the OpenGL 1.5 specification (section 2.11.2) gives it for
    /// glFrustum: looking down -z, clip planes at distances `near` and `far` greater than 0.
    [[nodiscard]] static Matrix frustum(double left, double right, double bottom, double top, double near,
                                        double far);

    /// Parallel projection of a box, as the OpenGL 1.5 specification (section 2.11.2) gives it for glOrtho.
    [[nodiscard]] static Matrix orthographic(double left, double right, double bottom, double top,
                                             double near, double far);

    /// Row and column from 0; not checked.
    constexpr double operator()(int row, int column) const { return m[index(row, column)]; }
    constexpr double& operator()(int row, int column) { return m[index(row, column)]; }

    /// The sixteen elements, row by row.
    [[nodiscard]] constexpr double const* data() const { return m.data(); }

    constexpr bool operator==(Matrix const&) const = default;

private:
    static constexpr std::size_t index(int row, int column)
    {
        return static_cast<std::size_t>(4 * row + column);
    }

    std::array<double, 16> m{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};

[[nodiscard]] Matrix operator*(Matrix const& a, Matrix const& b);

[[nodiscard]] Matrix transpose(Matrix const& a);

/// The last column's first three elements.
[[nodiscard]] Vector3 translationOf(Matrix const& a);

/// A point through an affine map; the last row is not looked at.
[[nodiscard]] Vector3 transformPoint(Matrix const& a, Vector3 const& point);
