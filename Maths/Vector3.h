#pragma once

#include <cmath>

/// A point, direction or colour-like triple of 64-bit floats. Whether it is a point or a direction is the
/// caller's to know. Column vector wherever a matrix acts on it.
class Vector3 {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr Vector3() = default;
    constexpr Vector3(double x_, double y_, double z_) : x(x_), y(y_), z(z_) {}

    /// Component 0, 1 or 2; any other index reads z.
    constexpr double operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }

    constexpr Vector3& operator+=(Vector3 const& v)
    {
        x += v.x;
        y += v.y;
        z += v.z;
        return *this;
    }
    constexpr Vector3& operator-=(Vector3 const& v)
    {
        x -= v.x;
        y -= v.y;
        z -= v.z;
        return *this;
    }
    constexpr Vector3& operator*=(double s)
    {
        x *= s;
        y *= s;
        z *= s;
        return *this;
    }

    constexpr bool operator==(Vector3 const&) const = default;
};

constexpr Vector3 operator+(Vector3 a, Vector3 const& b)
{
    return a += b;
}
constexpr Vector3 operator-(Vector3 a, Vector3 const& b)
{
    return a -= b;
}
constexpr Vector3 operator-(Vector3 const& v)
{
    return {-v.x, -v.y, -v.z};
}
constexpr Vector3 operator*(Vector3 v, double s)
{
    return v *= s;
}
constexpr Vector3 operator*(double s, Vector3 v)
{
    return v *= s;
}

[[nodiscard]] constexpr double dot(Vector3 const& a, Vector3 const& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Right-handed cross product: cross(x axis, y axis) is the z axis.
[[nodiscard]] constexpr Vector3 cross(Vector3 const& a, Vector3 const& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

[[nodiscard]] inline double length(Vector3 const& v)
{
    return std::hypot(v.x, v.y, v.z);
}

[[nodiscard]] inline bool isFinite(Vector3 const& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
