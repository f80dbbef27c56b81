#pragma once

#include "Maths/UVector3.h"
#include "SceneGraph/GeometryData.h"

#include <cstdint>
#include <vector>

/// Vertices with normals and triangles. A surface node may take the three from different records.
class SurfaceGeometryData : public GeometryData {
public:
    SurfaceGeometryData() = default;
    ~SurfaceGeometryData() override;

    std::vector<UVector3> normals;    ///< one a vertex
    std::vector<std::int32_t> facets; ///< three vertex indices a triangle, counter-clockwise from the front
};
