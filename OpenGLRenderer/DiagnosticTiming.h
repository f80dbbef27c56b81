#pragma once

#include "SceneGraph/SGRootNode.h"

namespace Diagnostic {

/// Frames per second that the renderer draws of a scene by its current strategy, measured over three frames
/// after two that are not counted. Logs the result.
/// \param bailIfSlow  end after the first frame, with a rate of 0, if that took more than a second
/// \return 0 as well where the clock went back
[[nodiscard]] double testFPS(smart_ptr<SGRootNode> const& root, bool bailIfSlow);

} // namespace Diagnostic
