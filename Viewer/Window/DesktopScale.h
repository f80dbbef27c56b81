#pragma once

#include <string_view>

namespace sgview {

/// How many pixels a point is to be by the wish of an X display, which knows of no other density: desktops
/// say it in dots per inch by the resource Xft.dpi. 1 where it says nothing.
[[nodiscard]] double desktopScaleOfX();

/// The same from the resource's text.
[[nodiscard]] double scaleFromDpi(std::string_view text);

} // namespace sgview
