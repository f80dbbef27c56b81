#pragma once

#include "SceneGraph/SGSharedData.h"
#include "Utilities/Color.h"

namespace sgview {

// How strongly a bone holds, 0 to 1, as a colour: the stronger, the lighter, in even steps of lightness.

/// \param weight  0 to 1; what lies outside counts as the nearer end
[[nodiscard]] Color influenceColor(double weight);

/// The lines at quarters: light on the ramp's dark part, dark on its light one.
[[nodiscard]] Color influenceLineColor(double weight);

/// The ramp as a picture, from 0 at the left to 1 at the right, with a line at every quarter.
[[nodiscard]] smart_ptr<SharedImage> influenceRamp();

/// Where a weight lies in the picture, across.
[[nodiscard]] double influenceCoordinate(double weight);

} // namespace sgview
