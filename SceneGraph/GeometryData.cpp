#include "SceneGraph/GeometryData.h"

GeometryData::~GeometryData() = default;
