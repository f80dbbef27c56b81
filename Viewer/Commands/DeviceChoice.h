#pragma once

#include "Viewer/CommandLine/CommandLine.h"

namespace sgview {

/// Has the device that was asked for draw from now on, or writes to standard output which there are: number,
/// name and driver.
/// \return whether anything is to be drawn
/// \throws ContextError  where there is no such device, or the system numbers none
/// \throws OutputError
[[nodiscard]] bool chooseDevice(DeviceRequest const& request);

} // namespace sgview
