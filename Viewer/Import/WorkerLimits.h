#pragma once

#include "Viewer/Import/ImportOptions.h"

namespace sgview {

/// Gives up, for this process and for good, what an import does not need: memory and processor time beyond
/// the limits, written files, core dumps, other processes, new privileges, other programs, the network.
///
/// \param limitMemory  whether address space is limited too
/// \return whether every limit that the system knows is in place
[[nodiscard]] bool takeOnLimits(ImportLimits const& limits, bool limitMemory);

} // namespace sgview
