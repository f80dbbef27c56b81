#include "Viewer/Import/LocalMap.h"

#include <algorithm>
#include <cmath>

namespace sgview {

namespace {

double lengthOf(Quaternion const& q)
{
    return std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
}

Matrix3 toMatrix(Quaternion const& q)
{
    return Matrix3({1 - 2 * (q.y * q.y + q.z * q.z), 2 * (q.x * q.y - q.z * q.w), 2 * (q.x * q.z + q.y * q.w),
                    2 * (q.x * q.y + q.z * q.w), 1 - 2 * (q.x * q.x + q.z * q.z), 2 * (q.y * q.z - q.x * q.w),
                    2 * (q.x * q.z - q.y * q.w), 2 * (q.y * q.z + q.x * q.w),
                    1 - 2 * (q.x * q.x + q.y * q.y)});
}

/// Shepperd, "Quaternion from Rotation Matrix", Journal of Guidance and Control 1(3), 1978.
Quaternion toQuaternion(Matrix3 const& m)
{
    double const trace = m[0] + m[4] + m[8];
    if (trace >= m[0] && trace >= m[4] && trace >= m[8])
        return normalised({m[7] - m[5], m[2] - m[6], m[3] - m[1], 1 + trace});
    if (m[0] >= m[4] && m[0] >= m[8])
        return normalised({1 + m[0] - m[4] - m[8], m[1] + m[3], m[2] + m[6], m[7] - m[5]});
    if (m[4] >= m[8])
        return normalised({m[1] + m[3], 1 + m[4] - m[0] - m[8], m[5] + m[7], m[2] - m[6]});
    return normalised({m[2] + m[6], m[5] + m[7], 1 + m[8] - m[0] - m[4], m[3] - m[1]});
}

double largestDifference(Matrix const& a, Matrix const& b)
{
    double largest = 0.0;
    for (int i = 0; i < 16; ++i)
        largest = std::max(largest, std::abs(a.data()[i] - b.data()[i]));
    return largest;
}

} // namespace

bool isFinite(Matrix const& matrix)
{
    return std::all_of(matrix.data(), matrix.data() + 16, [](double x) { return std::isfinite(x); });
}

bool hasDirection(Quaternion const& q)
{
    double const length = lengthOf(q);
    return std::isfinite(length) && length > 1e-12;
}

Quaternion normalised(Quaternion const& q)
{
    if (!hasDirection(q))
        return {};
    double const scale = 1.0 / lengthOf(q);
    return {q.x * scale, q.y * scale, q.z * scale, q.w * scale};
}

Matrix localMap(ModelNode const& node)
{
    if (node.hasMatrix)
        return node.matrix;
    Matrix3 linear = toMatrix(node.rotation);
    for (int i = 0; i < 9; ++i)
        linear[i] *= node.scale[i % 3];
    return {linear, node.translation};
}

bool setLocalMap(ModelNode& node, Matrix const& given, double tolerance)
{
    if (!isFinite(given))
        return false;
    Matrix3 const linear(given);
    Matrix const matrix(linear, translationOf(given));

    Vector3 const x(linear[0], linear[3], linear[6]);
    Vector3 const y(linear[1], linear[4], linear[7]);
    Vector3 const z(linear[2], linear[5], linear[8]);
    double const mirror = determinant(linear) < 0.0 ? -1.0 : 1.0;
    node.translation = translationOf(given);
    node.scale = {mirror * length(x), length(y), length(z)};
    node.rotation = {};
    if (node.scale.x != 0.0 && node.scale.y != 0.0 && node.scale.z != 0.0) {
        Matrix3 rotation = linear;
        for (int i = 0; i < 9; ++i)
            rotation[i] /= node.scale[i % 3];
        node.rotation = toQuaternion(rotation);
    }
    node.hasMatrix = false;
    double const size = std::max({std::abs(node.scale.x), node.scale.y, node.scale.z, 1e-30});
    if (largestDifference(localMap(node), matrix) > tolerance * size) {
        node.hasMatrix = true;
        node.matrix = matrix;
    }
    return true;
}

} // namespace sgview
