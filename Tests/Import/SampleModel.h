#pragma once

#include "Viewer/Import/Model.h"

namespace sgview {

/// A small model that uses every member of every part of a model and passes `checkModel`: a skinned, textured
/// triangle, a curve, an animation.
[[nodiscard]] Model makeSampleModel();

} // namespace sgview
