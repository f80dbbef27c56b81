#include "Viewer/Scene/SimilaritySplit.h"

#include "Maths/UVector3.h"

#include <algorithm>
#include <cmath>

namespace sgview {

namespace {

// Files hold single-precision matrices: a similarity read from one is this far off at most. Positions stay
// exact either way; only normals feel it.
constexpr double similarityTolerance = 1e-5;

constexpr Matrix3 zeroMatrix({0, 0, 0, 0, 0, 0, 0, 0, 0});

Vector3 columnOf(Matrix3 const& a, int column)
{
    return {a[column], a[3 + column], a[6 + column]};
}

Matrix3 fromColumns(Vector3 const& a, Vector3 const& b, Vector3 const& c)
{
    return Matrix3({a.x, b.x, c.x, a.y, b.y, c.y, a.z, b.z, c.z});
}

bool isRotation(Matrix3 const& a)
{
    Matrix3 const product = transpose(a) * a;
    Matrix3 const identity;
    for (int i = 0; i < 9; ++i)
        if (!(std::abs(product[i] - identity[i]) <= similarityTolerance))
            return false;
    return true;
}

bool isFinite(Matrix const& map)
{
    return std::all_of(map.data(), map.data() + 16, [](double element) { return std::isfinite(element); });
}

Matrix3 inverse(Matrix3 const& a)
{
    return transpose(cofactors(a)) * (1.0 / determinant(a));
}

} // namespace

SimilaritySplit splitSimilarity(Matrix const& map)
{
    if (!isFinite(map))
        return {Transform(), zeroMatrix};

    Matrix3 const linear(map);
    Vector3 const translation = translationOf(map);
    double largest = 0.0;
    for (int i = 0; i < 9; ++i)
        largest = std::max(largest, std::abs(linear[i]));
    if (largest < 1e-150)
        return {Transform(Matrix3(), translation, 1.0), zeroMatrix};

    Matrix3 const unit =
        linear * (1.0 / largest); // so that neither product nor root leaves the range of a double
    double const volume = determinant(unit);
    if (std::abs(volume) < 1e-12)
        return {Transform(Matrix3(), translation, largest), unit};

    double const scale = std::cbrt(volume);
    Matrix3 const shape = unit * (1.0 / scale);
    if (isRotation(shape))
        return {Transform(shape, translation, scale * largest), Matrix3()};

    UVector3 const x(columnOf(shape, 0));
    Vector3 const second = columnOf(shape, 1);
    UVector3 const y(second - x * dot(x, second));
    Matrix3 const rotation = fromColumns(x, y, cross(x, y));
    return {Transform(rotation, translation, scale * largest), transpose(rotation) * shape};
}

Transform relativeTransform(Transform const& parent, Transform const& child)
{
    // The rotations may be orthonormal only to single precision, so a transpose would not do.
    Matrix3 const back = inverse(parent.getRotation());
    double const scale = 1.0 / parent.getScale();
    return Transform(back * child.getRotation(),
                     back * (child.getTranslation() - parent.getTranslation()) * scale,
                     child.getScale() * scale);
}

} // namespace sgview
