#include "Viewer/Commands/DeviceChoice.h"

#include "Viewer/Platform/GraphicsDevices.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/OutputFile.h"

#include <iostream>

namespace sgview {

namespace {

void printDevices()
{
    std::vector<GraphicsDevice> const devices = listGraphicsDevices();
    if (devices.empty())
        throw ContextError("the system numbers no graphics devices (EGL_EXT_device_enumeration)");
    for (std::size_t i = 0; i < devices.size(); ++i) {
        GraphicsDevice const& device = devices[i];
        std::cout << i << "  " << (device.problem.empty() ? device.name : device.problem) << "  ("
                  << device.driver << ")\n";
    }
    flushStandardOutput();
}

} // namespace

bool chooseDevice(DeviceRequest const& request)
{
    if (request.list)
        printDevices();
    else if (request.number)
        useGraphicsDevice(*request.number);
    return !request.list;
}

} // namespace sgview
