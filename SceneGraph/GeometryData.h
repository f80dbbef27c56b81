#pragma once

#include "Maths/Vector3.h"
#include "Utilities/smart_ptr.h"

#include <vector>

/// Positions, in the space of the node that draws them: the points of a curve, or a surface's vertices.
class GeometryData : public smart_base {
public:
    GeometryData() = default;
    ~GeometryData() override;

    std::vector<Vector3> vertices;
    bool closed = false; ///< of a curve: the last point joins the first
};
