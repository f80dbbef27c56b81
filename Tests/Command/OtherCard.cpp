// Preloaded into sgview, gives the workers that run the graphics diagnostic another card than the program
// has, as a machine with two cards may. The environment variable SG_OTHER_CARD says where:
//
//   offscreen   without a screen; in a hidden window it is the program's
//   everywhere
//   unreadable  without a screen; nothing that is drawn in a hidden window can be read back
//   richer      nowhere, but all its extensions are there
//   lying       nowhere, but its name is that of a card which claims more than it can, for the program too

#include <SDL2/SDL.h>
#include <SDL2/SDL_opengl.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <dlfcn.h>

namespace {

bool isWorker()
{
    std::ifstream stream("/proc/self/cmdline");
    std::string const line{std::istreambuf_iterator<char>(stream), {}};
    return line.find("--diagnostic-worker") != std::string::npos;
}

bool isWanted(std::string_view circumstance)
{
    char const* const value = std::getenv("SG_OTHER_CARD");
    return isWorker() && value && value == circumstance;
}

bool isOffscreen(char const* driver)
{
    return driver && std::string_view(driver) == "offscreen";
}

template <typename Function>
Function real(char const* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

using GetString = GLubyte const*(GLenum);
GetString* honest = nullptr;

GLubyte const* getString(GLenum name)
{
    return name == GL_RENDERER ? reinterpret_cast<GLubyte const*>("ATI Radeon 9200 OpenGL Engine")
                               : honest(name);
}

void lie()
{
    auto* const pointer = reinterpret_cast<GetString**>(::dlsym(RTLD_DEFAULT, "epoxy_glGetString"));
    (*pointer)(GL_VERSION); // the first call puts the driver's own function there
    if (*pointer != getString)
        honest = std::exchange(*pointer, getString);
}

} // namespace

extern "C" int SDL_VideoInit(char const* driver)
{
    bool const isOther =
        isWanted("everywhere") || (isOffscreen(driver) && (isWanted("offscreen") || isWanted("unreadable")));
    if (isOther)
        ::setenv("GALLIUM_DRIVER", "softpipe", 1);
    else if (isWorker())
        ::unsetenv("GALLIUM_DRIVER");
    if (isWanted("richer"))
        ::unsetenv("MESA_EXTENSION_OVERRIDE");
    return real<int (*)(char const*)>("SDL_VideoInit")(driver);
}

extern "C" SDL_GLContext SDL_GL_CreateContext(SDL_Window* window)
{
    SDL_GLContext const context = real<SDL_GLContext (*)(SDL_Window*)>("SDL_GL_CreateContext")(window);
    if (context && isWanted("unreadable") && !isOffscreen(SDL_GetCurrentVideoDriver()))
        reinterpret_cast<void (*)(GLenum)>(SDL_GL_GetProcAddress("glDrawBuffer"))(GL_NONE);
    char const* const circumstance = std::getenv("SG_OTHER_CARD");
    if (context && circumstance && std::string_view(circumstance) == "lying")
        lie();
    return context;
}
