#include "Maths/Matrix.h"

Matrix::Matrix(Matrix3 const& linear, Vector3 const& translation)
{
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            (*this)(row, column) = linear[3 * row + column];
        (*this)(row, 3) = translation[row];
    }
}

Matrix Matrix::translationMatrix(Vector3 const& translation)
{
    return Matrix(Matrix3(), translation);
}

Matrix Matrix::rotationMatrix(Vector3 const& axis, double angle)
{
    return Matrix(Matrix3::rotationMatrix(axis, angle), Vector3());
}

Matrix Matrix::frustum(double left, double right, double bottom, double top, double near, double far)
{
    double const width = right - left;
    double const height = top - bottom;
    double const depth = far - near;
    return Matrix({2.0 * near / width, 0.0, (right + left) / width, 0.0,       //
                   0.0, 2.0 * near / height, (top + bottom) / height, 0.0,     //
                   0.0, 0.0, -(far + near) / depth, -2.0 * far * near / depth, //
                   0.0, 0.0, -1.0, 0.0});
}

Matrix Matrix::orthographic(double left, double right, double bottom, double top, double near, double far)
{
    double const width = right - left;
    double const height = top - bottom;
    double const depth = far - near;
    return Matrix({2.0 / width, 0.0, 0.0, -(right + left) / width,   //
                   0.0, 2.0 / height, 0.0, -(top + bottom) / height, //
                   0.0, 0.0, -2.0 / depth, -(far + near) / depth,    //
                   0.0, 0.0, 0.0, 1.0});
}

Matrix operator*(Matrix const& a, Matrix const& b)
{
    Matrix product;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            product(row, column) = a(row, 0) * b(0, column) + a(row, 1) * b(1, column) +
                                   a(row, 2) * b(2, column) + a(row, 3) * b(3, column);
    return product;
}

Matrix transpose(Matrix const& a)
{
    Matrix result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result(row, column) = a(column, row);
    return result;
}

Vector3 translationOf(Matrix const& a)
{
    return {a(0, 3), a(1, 3), a(2, 3)};
}

Vector3 transformPoint(Matrix const& a, Vector3 const& point)
{
    return Matrix3(a) * point + translationOf(a);
}
