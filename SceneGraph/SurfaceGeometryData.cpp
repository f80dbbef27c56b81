#include "SceneGraph/SurfaceGeometryData.h"

SurfaceGeometryData::~SurfaceGeometryData() = default;
