#pragma once

#include "Utilities/Color.h"

namespace sgview {

/// What a person has switched on and off in the view.
struct DisplayOptions {
    bool wireframe = false;
    bool unlit = false;
    bool normals = false;
    bool skeleton = false;
    bool axes = false;
    bool influences = false; ///< the map of a bone's hold on vertices
    bool grid = false;
    Color background;
};

} // namespace sgview
