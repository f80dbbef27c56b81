#include "Maths/Transform.h"

namespace {

// Told to be vectors: found by itself, they cost the compiler nearly as much as they save.
using Pair [[gnu::vector_size(2 * sizeof(double))]] = double;

} // namespace

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
    Matrix3 const& turn = b.getRotation();
    Vector3 const& moved = b.getTranslation();
    double const scale = b.getScale();
    // The rows of b's matrix, the last one too: the sign of zeros and what is not finite come out the same.
    Pair const rows[4][2] = {{Pair{turn[0], turn[1]} * scale, {turn[2] * scale, moved.x}},
                             {Pair{turn[3], turn[4]} * scale, {turn[5] * scale, moved.y}},
                             {Pair{turn[6], turn[7]} * scale, {turn[8] * scale, moved.z}},
                             {{0.0, 0.0}, {0.0, 1.0}}};
    Matrix product;
    for (int row = 0; row < 4; ++row)
        for (int half = 0; half < 2; ++half) {
            Pair const sum = a(row, 0) * rows[0][half] + a(row, 1) * rows[1][half] +
                             a(row, 2) * rows[2][half] + a(row, 3) * rows[3][half];
            product(row, 2 * half) = sum[0];
            product(row, 2 * half + 1) = sum[1];
        }
    return product;
}

Transform inverse(Transform const& a)
{
    Matrix3 const back = transpose(a.getRotation());
    double const scale = 1.0 / a.getScale();
    return Transform(back, back * a.getTranslation() * -scale, scale);
}
