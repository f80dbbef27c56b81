#pragma once

namespace sgview {

/// Gives Dear ImGui its colours, sizes and font for a screen, and says what `inPixels` counts by from then
/// on. A back end must make the font's texture anew.
void applyGuiStyle(double pixelsPerPoint);

/// Points in the whole pixels that Dear ImGui counts in here: what lies on a pixel's edge is not blurred.
[[nodiscard]] float inPixels(float points);

} // namespace sgview
