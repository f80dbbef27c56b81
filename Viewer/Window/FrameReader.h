#pragma once

#include "Maths/Rect.h"
#include "SceneGraph/SGRenderer.h"
#include "Viewer/Platform/Picture.h"

namespace sgview {

/// Reads a part of what has been drawn and not yet shown, as the screen will show it: with smooth edges where
/// the context has several samples a pixel.
/// \param area  pixels, from the lower left corner
[[nodiscard]] Picture readFrame(SGRenderer& renderer, quarl::Rect<int> const& area);

} // namespace sgview
