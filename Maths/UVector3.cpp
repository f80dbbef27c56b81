#include "Maths/UVector3.h"

#include <algorithm>

Vector3 UVector3::normalisedExtreme(Vector3 const& v)
{
    double const largest = std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
    if (!(largest > 0.0) || !isFinite(v))
        return {};
    // Two divisions: the reciprocal of a denormal number is infinite.
    Vector3 const scaled(v.x / largest, v.y / largest, v.z / largest);
    return scaled * (1.0 / length(scaled));
}
