#pragma once

#include "SceneGraph/SGExtraData.h"

#include <vector>

/// An array as OpenGL takes it, tightly packed, on the shared data that it was converted from: x, y, z a
/// vertex or normal, u, v a texture coordinate, four weights or bone indices a vertex.
template <typename T>
class FloatData : public SGExtraData {
public:
    std::vector<T> values;
};
