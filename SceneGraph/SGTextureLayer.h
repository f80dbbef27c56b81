#pragma once

#include "SceneGraph/SGSharedData.h"
#include "Utilities/Color.h"
#include "Utilities/smart_ptr.h"

/// One texture of a geometry node: layer 0 on the lit colour, each further one on the result.
struct SGTextureLayer {
    smart_ptr<SharedImage> texture;
    smart_ptr<SharedTextureCoords> coordinates;
    bool clamp = false;          ///< clamped at the edges instead of repeated
    bool blendWithColor = false; ///< the picture mixes the lit colour with `color` instead of multiplying it
    Color color{0.0F, 0.0F, 0.0F, 0.0F};
    bool colorize = false; ///< draw with a tinted copy: light pixels in the first colour, dark in the second
    Color firstColor{1.0F, 1.0F, 1.0F, 1.0F};
    Color secondColor;
};
