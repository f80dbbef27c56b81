#pragma once

#include "Maths/Vector3.h"
#include "Utilities/Color.h"

/// A directional light.
struct SGLightData {
    Color ambient;
    Color diffuse{1.0F, 1.0F, 1.0F, 1.0F};
    Color specular{1.0F, 1.0F, 1.0F, 1.0F};
    Vector3 direction{0.0, 0.0, 1.0}; ///< from the surface towards the light, in eye space; any length but 0
};
