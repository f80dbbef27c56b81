#pragma once

#include "Utilities/Color.h"

#include <optional>
#include <utility>

namespace sgview {

/// How a person wants a model drawn, against how its file has it.
struct SceneOptions {
    bool wireframe = false;
    double lineWidth = 1.0; ///< of curves and wireframes, pixels
    bool unlit = false;
    bool mirror = false; ///< below a transform of scale -1

    /// Tints every texture: light pixels towards the first colour, dark ones towards the second.
    std::optional<std::pair<Color, Color>> colorize;

    Color background{1.0F, 1.0F, 1.0F, 1.0F};
};

} // namespace sgview
