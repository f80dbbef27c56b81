// An OpenGL that takes every call and does nothing, for counting what the caller spends.

#include <epoxy/gl.h>

#include <GL/glu.h>

namespace {

template <typename EntryPoint>
struct Silent;

template <typename Result, typename... Arguments>
struct Silent<Result (*)(Arguments...)> {
    static Result call(Arguments...) { return Result(); }
};

GLubyte const* getString(GLenum name)
{
    char const* text = "Silent";
    if (name == GL_VERSION)
        text = "2.1 Silent";
    else if (name == GL_EXTENSIONS)
        text = "GL_ARB_multitexture GL_ARB_vertex_buffer_object";
    return reinterpret_cast<GLubyte const*>(text);
}

void getIntegers(GLenum name, GLint* values)
{
    constexpr GLint textureUnits = 2;
    if (name == GL_MAX_TEXTURE_UNITS_ARB)
        *values = textureUnits;
}

void generate(GLsizei count, GLuint* names)
{
    static GLuint last = 0;
    for (GLsizei i = 0; i < count; ++i)
        names[i] = ++last;
}

} // namespace

#define SG_SILENT(name) decltype(epoxy_##name) epoxy_##name = Silent<decltype(epoxy_##name)>::call;
#include "SilentEntryPoints.def"
#undef SG_SILENT

#define SG_ANSWERED(name, answer) decltype(epoxy_##name) epoxy_##name = answer;
SG_ANSWERED(glGetString, getString)
SG_ANSWERED(glGetIntegerv, getIntegers)
SG_ANSWERED(glGenBuffersARB, generate)
SG_ANSWERED(glGenTextures, generate)
#undef SG_ANSWERED

epoxy_resolver_failure_handler_t epoxy_set_resolver_failure_handler(epoxy_resolver_failure_handler_t)
{
    return nullptr;
}

GLint gluBuild2DMipmaps(GLenum, GLint, GLsizei, GLsizei, GLenum, GLenum, void const*)
{
    return 0;
}
