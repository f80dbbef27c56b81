#include "Viewer/Platform/GraphicsDevices.h"

#include "Viewer/Platform/HeadlessContext.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <cstdlib>
#include <optional>

namespace sgview {

namespace {

/// What names the device to SDL's driver without a screen.
constexpr char const* deviceVariable = "SDL_HINT_EGL_DEVICE";

std::vector<EGLDeviceEXT> findDevices()
{
    if (!epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_device_base") &&
        !epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_device_enumeration"))
        return {};
    EGLint count = 0;
    if (eglQueryDevicesEXT(0, nullptr, &count) != EGL_TRUE || count < 1)
        return {};
    std::vector<EGLDeviceEXT> devices(static_cast<std::size_t>(count));
    if (eglQueryDevicesEXT(count, devices.data(), &count) != EGL_TRUE)
        return {};
    devices.resize(static_cast<std::size_t>(count));
    return devices;
}

std::string textOf(char const* text)
{
    return text ? text : "";
}

/// The file of a device of the kernel's; empty where it has none.
std::string fileOf(EGLDeviceEXT device)
{
    std::string const extensions = textOf(eglQueryDeviceStringEXT(device, EGL_EXTENSIONS));
    if (extensions.find("EGL_EXT_device_drm") == std::string::npos)
        return "";
    return textOf(eglQueryDeviceStringEXT(device, EGL_DRM_DEVICE_FILE_EXT));
}

std::string driverOf(EGLDeviceEXT device)
{
    EGLDisplay const display = eglGetPlatformDisplayEXT(EGL_PLATFORM_DEVICE_EXT, device, nullptr);
    if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) != EGL_TRUE)
        return "unknown driver";
    // By its address: the loader offers it only where a display is current.
    auto const nameOf =
        epoxy_has_egl_extension(display, "EGL_MESA_query_driver")
            ? reinterpret_cast<PFNEGLGETDISPLAYDRIVERNAMEPROC>(eglGetProcAddress("eglGetDisplayDriverName"))
            : nullptr;
    std::string const driver = textOf(nameOf ? nameOf(display) : eglQueryString(display, EGL_VENDOR));
    eglTerminate(display);
    return driver;
}

/// Puts the user's own choice back.
class DeviceKeeper {
public:
    DeviceKeeper()
    {
        if (char const* const value = std::getenv(deviceVariable))
            value_ = value;
    }
    DeviceKeeper(DeviceKeeper const&) = delete;
    DeviceKeeper& operator=(DeviceKeeper const&) = delete;
    ~DeviceKeeper()
    {
        if (value_)
            ::setenv(deviceVariable, value_->c_str(), 1);
        else
            ::unsetenv(deviceVariable);
    }

private:
    std::optional<std::string> value_;
};

GraphicsDevice describe(EGLDeviceEXT device, std::size_t number)
{
    GraphicsDevice described;
    std::string const file = fileOf(device);
    described.driver = driverOf(device) + (file.empty() ? "" : ", " + file);
    ::setenv(deviceVariable, std::to_string(number).c_str(), 1);
    try {
        HeadlessContext const context({8, 8});
        described.name = textOf(reinterpret_cast<char const*>(glGetString(GL_RENDERER)));
    } catch (ContextError const& error) {
        described.problem = error.what();
    }
    return described;
}

} // namespace

std::vector<GraphicsDevice> listGraphicsDevices()
{
    DeviceKeeper const keeper;
    std::vector<GraphicsDevice> devices;
    for (EGLDeviceEXT const device : findDevices())
        devices.push_back(describe(device, devices.size()));
    return devices;
}

void useGraphicsDevice(unsigned number)
{
    std::size_t const count = findDevices().size();
    if (number >= count)
        throw ContextError("there is no graphics device " + std::to_string(number) + ": the system has " +
                           std::to_string(count) + ", numbered from 0");
    ::setenv(deviceVariable, std::to_string(number).c_str(), 1);
}

} // namespace sgview
