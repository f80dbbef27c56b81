#pragma once

#include "Viewer/Import/Model.h"

#include <array>
#include <vector>

namespace sgview {

/// Joins line segments that share an end into lines as long as they get; a line that comes back to its start
/// is closed. Lines end where more or fewer than two segments meet. Ends at one place count as one.
///
/// Segments without length or with a vertex that is missing or not finite are left out.
/// \return curves with positions and `closed` set; name and material are the caller's
[[nodiscard]] std::vector<ModelCurve> buildCurves(std::vector<Vector3> const& positions,
                                                  std::vector<std::array<std::int32_t, 2>> const& segments);

} // namespace sgview
