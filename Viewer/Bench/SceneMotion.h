#pragma once

#include "Maths/Transform.h"

namespace sgview {

// How the scenes for measuring stand and move, for others that draw the same by other means. Angles are in
// radians; frames count from 0.

/// How far a surface of the grid is turned about the y axis at frame 0, where neighbours differ, and how far
/// each frame turns it on where transforms move.
[[nodiscard]] double gridTurn(int surface);
inline constexpr double turnAFrame = 0.01;

/// How far the first bone of a sheet turns about the y axis; the second turns as far the other way.
[[nodiscard]] double sheetBend(int sheet, int frame);

/// The second bone's hold on a vertex of a sheet; the first has the rest.
/// \param vertices  of the sheet, a side
[[nodiscard]] double weightByColumn(int column, int vertices);
[[nodiscard]] double weightVaried(int column, int row, int vertices);

/// Transforms nested in one another.
namespace chain {

/// About what all levels turn, and from how far away the camera looks at it.
inline constexpr Vector3 middle{0.0, 5.73, 0.0};
inline constexpr double viewingDistance = 22.0;

/// There is a cube at every tenth level, from the first on.
inline constexpr int levelsACube = 10;

/// How the whole chain is turned: about `middle` and the z axis.
[[nodiscard]] Transform top(int frame);

/// From a level to the next.
/// \param levels  of the chain
[[nodiscard]] Transform step(int levels);

/// The same where transforms move.
[[nodiscard]] Transform movingStep(int levels, int level, int frame);

} // namespace chain

/// Rotations about an axis.
[[nodiscard]] Matrix3 turnAboutY(double angle);
[[nodiscard]] Matrix3 turnAboutZ(double angle);

} // namespace sgview
