#pragma once

#include "Maths/Vector3.h"

/// A direction of length 1. Converts to Vector3 freely; the way back normalises.
///
/// The zero vector and vectors that are not finite have no direction: they become (0, 0, 0), so that what is
/// computed from them stays finite.
class UVector3 : public Vector3 {
public:
    /// The z axis.
    constexpr UVector3() : Vector3(0.0, 0.0, 1.0) {}

    explicit UVector3(Vector3 const& v) : Vector3(normalised(v)) {}
    UVector3(double x_, double y_, double z_) : UVector3(Vector3(x_, y_, z_)) {}

private:
    static Vector3 normalised(Vector3 const& v)
    {
        double const squared = dot(v, v);
        if (squared > smallestSafeSquare && squared < largestSafeSquare)
            return v * (1.0 / std::sqrt(squared));
        return normalisedExtreme(v);
    }
    static Vector3 normalisedExtreme(Vector3 const& v);

    // Between these, the squared length neither underflows nor overflows enough to cost precision.
    static constexpr double smallestSafeSquare = 1e-280;
    static constexpr double largestSafeSquare = 1e280;
};

/// Two unit vectors `a` and `b` perpendicular to `n` and to one another, with cross(a, b) = n.
///
/// Duff et al., "Building an Orthonormal Basis, Revisited", Journal of Computer Graphics Techniques 6(1),
/// 2017.
///
/// \param n  unit length; for any other vector the result spans no particular plane
inline void getBasis(Vector3 const& n, Vector3& a, Vector3& b)
{
    double const sign = std::copysign(1.0, n.z);
    double const p = -1.0 / (sign + n.z);
    double const q = n.x * n.y * p;
    a = Vector3(1.0 + sign * n.x * n.x * p, sign * q, -sign * n.x);
    b = Vector3(q, sign + n.y * n.y * p, -n.y);
}
