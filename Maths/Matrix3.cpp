#include "Maths/Matrix3.h"

#include "Maths/Matrix.h"
#include "Maths/UVector3.h"

Matrix3::Matrix3(Matrix const& matrix)
{
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            (*this)[3 * row + column] = matrix(row, column);
}

Matrix3 operator*(Matrix3 const& a, Matrix3 const& b)
{
    Matrix3 product;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            product[3 * row + column] =
                a[3 * row] * b[column] + a[3 * row + 1] * b[3 + column] + a[3 * row + 2] * b[6 + column];
    return product;
}

Matrix3 operator*(Matrix3 const& a, double s)
{
    Matrix3 scaled = a;
    for (int i = 0; i < 9; ++i)
        scaled[i] *= s;
    return scaled;
}

Matrix3 transpose(Matrix3 const& a)
{
    return Matrix3({a[0], a[3], a[6], a[1], a[4], a[7], a[2], a[5], a[8]});
}

Matrix3 cofactors(Matrix3 const& a)
{
    return Matrix3({a[4] * a[8] - a[5] * a[7], a[5] * a[6] - a[3] * a[8], a[3] * a[7] - a[4] * a[6],
                    a[2] * a[7] - a[1] * a[8], a[0] * a[8] - a[2] * a[6], a[1] * a[6] - a[0] * a[7],
                    a[1] * a[5] - a[2] * a[4], a[2] * a[3] - a[0] * a[5], a[0] * a[4] - a[1] * a[3]});
}

Matrix3 Matrix3::rotationMatrix(Vector3 const& axis, double angle)
{
    UVector3 const u(axis);
    if (u == Vector3())
        return {};
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    double const d = 1.0 - c;
    return Matrix3({c + u.x * u.x * d, u.x * u.y * d - u.z * s, u.x * u.z * d + u.y * s,
                    u.y * u.x * d + u.z * s, c + u.y * u.y * d, u.y * u.z * d - u.x * s,
                    u.z * u.x * d - u.y * s, u.z * u.y * d + u.x * s, c + u.z * u.z * d});
}
