#pragma once

#include "Viewer/CommandLine/CommandLine.h"

namespace sgview {

/// With the bound on the longer side applied; the shape is kept.
[[nodiscard]] PictureSize pictureSizeOf(RenderRequest const& request);

/// What a request to draw needs as a whole, and which of its options do not go together.
/// \throws UsageError
void checkRules(RenderRequest const& request);

} // namespace sgview
