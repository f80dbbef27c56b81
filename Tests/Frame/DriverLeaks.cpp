// For builds with the leak sanitizer: what OpenGL's driver itself leaks is suppressed, by the driver's name.
// The name is known only while the driver is loaded, so closing it does nothing. Suppressed too is what a
// window's libraries keep as long as the process lives: fontconfig its configuration, D-Bus its connection,
// SDL what it knows of Wayland's screens.

#include <string_view>

#include <dlfcn.h>
#include <link.h>

namespace {

/// OpenGL's drivers, and the Vulkan drivers that one of them draws with.
bool isDriver(void* library)
{
    link_map* map = nullptr;
    if (::dlinfo(library, RTLD_DI_LINKMAP, &map) != 0 || !map->l_name)
        return false;
    std::string_view const name(map->l_name);
    return name.ends_with("_dri.so") || name.find("/libvulkan_") != std::string_view::npos;
}

} // namespace

extern "C" int dlclose(void* library)
{
    using Close = int (*)(void*);
    static auto const next = reinterpret_cast<Close>(::dlsym(RTLD_NEXT, "dlclose"));
    return isDriver(library) ? 0 : next(library);
}

extern "C" char const* __lsan_default_suppressions();
extern "C" char const* __lsan_default_suppressions()
{
    return "leak:_dri.so\nleak:libvulkan_\nleak:libfontconfig.so\nleak:libdbus-1.so\n"
           "leak:libSDL2\nleak:libwayland-client.so\n";
}

// Tests look at what sgview says on standard error.
extern "C" char const* __lsan_default_options();
extern "C" char const* __lsan_default_options()
{
    return "print_suppressions=0";
}
