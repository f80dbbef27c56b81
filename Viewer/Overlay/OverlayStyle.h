#pragma once

#include "Utilities/Color.h"
#include "Viewer/Scene/Bounds.h"

#include <string>

namespace sgview {

/// What overlays are drawn to suit.
struct OverlayStyle {
    Bounds model;              ///< the model at rest
    Vector3 up{0.0, 1.0, 0.0}; ///< the axis that points up on the screen, unit length
    Color background;
    double pixelsPerPoint = 1.0;

    bool operator==(OverlayStyle const& other) const;

    /// The model's diagonal; 1 for a model without extent.
    [[nodiscard]] double size() const;

    /// Lines of this colour stand out from the background.
    [[nodiscard]] Color ink() const;

    /// A colour between the background's and `ink`, at 0 and 1.
    [[nodiscard]] Color shade(double strength) const;

    /// One of two colours: the second on a dark background.
    [[nodiscard]] Color suited(Color const& onLight, Color const& onDark) const;
};

/// A text at the end of a line.
struct OverlayLabel {
    Vector3 place; ///< in world space
    Vector3 start; ///< of the line; the text goes nearer to it where the end is out of the picture
    std::string text;
};

} // namespace sgview
