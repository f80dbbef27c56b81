#pragma once

#include "Viewer/Platform/Picture.h"

#include <cmath>

namespace sgview {

/// The sizes of a window as they are at the moment, in three units: those of the desktop, which the pointer
/// counts in; pixels of what is drawn into; and points, which sizes of text and widgets are told in, one
/// pixel each on a screen of usual density.
struct ScreenMeasures {
    static constexpr double smallestScale = 0.5;
    static constexpr double largestScale = 4.0;

    PictureSize units{1, 1};
    PictureSize pixels{1, 1};
    double pixelsPerPoint = 1.0;

    [[nodiscard]] double pixelsPerUnit() const { return static_cast<double>(pixels.width) / units.width; }

    /// The same as the screen has it, whatever the window's width is rounded to: desktops set it in such
    /// steps.
    [[nodiscard]] double ratioOfScreen() const
    {
        constexpr double steps = 120.0;
        return std::round(pixelsPerUnit() * steps) / steps;
    }
    [[nodiscard]] double pointsPerUnit() const { return pixelsPerUnit() / pixelsPerPoint; }
};

} // namespace sgview
