#pragma once

#include "Viewer/Import/PictureReader.h"

namespace sgview {

/// The same picture in another size, at least 1 by 1, by the filter of Mitchell and Netravali
/// ("Reconstruction Filters in Computer Graphics", SIGGRAPH 1988; B = C = 1/3), widened when shrinking.
/// Colours count by their alpha, so that what cannot be seen does not bleed into what can.
[[nodiscard]] Pixels resampled(Pixels const& pixels, std::int32_t width, std::int32_t height);

} // namespace sgview
