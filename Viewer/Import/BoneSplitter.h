#pragma once

#include "Viewer/Import/Model.h"

namespace sgview {

/// Makes every skin one of at most `mostBonesOfSkin` bones. A surface on a larger one gets a skin of just the
/// bones it uses, in the order of the larger one; where those are still too many, it becomes several surfaces
/// in its place, and Model::splits says so. What is drawn stays the same.
void splitByBones(Model& model);

} // namespace sgview
