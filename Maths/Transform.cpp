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

Transform inverse(Transform const& a)
{
    Matrix3 const back = transpose(a.getRotation());
    double const scale = 1.0 / a.getScale();
    return Transform(back, back * a.getTranslation() * -scale, scale);
}
