#include "Maths/Transform.h"

Transform::Transform(Vector3 const& axis, double angle) : rotation_(Matrix3::rotationMatrix(axis, angle)) {}

Matrix Transform::getMatrix() const
{
    return Matrix(rotation_ * scale_, translation_);
}

Transform operator*(Transform const& a, Transform const& b)
{
    return Transform(a.getRotation() * b.getRotation(),
                     a.getRotation() * b.getTranslation() * a.getScale() + a.getTranslation(),
                     a.getScale() * b.getScale());
}

Matrix operator*(Matrix const& a, Transform const& b)
{
    Matrix3 const linear = b.getRotation() * b.getScale();
    Vector3 const& moved = b.getTranslation();
    Matrix product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column)
            product(row, column) = a(row, 0) * linear[column] + a(row, 1) * linear[3 + column] +
                                   a(row, 2) * linear[6 + column] +
                                   a(row, 3) * 0.0; // the sign of zeros and what is not finite stay the same
        product(row, 3) = a(row, 0) * moved.x + a(row, 1) * moved.y + a(row, 2) * moved.z + a(row, 3);
    }
    return product;
}

Transform inverse(Transform const& a)
{
    Matrix3 const back = transpose(a.getRotation());
    double const scale = 1.0 / a.getScale();
    return Transform(back, back * a.getTranslation() * -scale, scale);
}
