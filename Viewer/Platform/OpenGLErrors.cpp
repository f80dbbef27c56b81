#include "Viewer/Platform/OpenGLErrors.h"

#include <epoxy/gl.h>

namespace sgview {

namespace {

std::string nameOf(GLenum error)
{
    switch (error) {
    case GL_INVALID_ENUM:
        return "invalid enum";
    case GL_INVALID_VALUE:
        return "invalid value";
    case GL_INVALID_OPERATION:
        return "invalid operation";
    case GL_STACK_OVERFLOW:
        return "stack overflow";
    case GL_STACK_UNDERFLOW:
        return "stack underflow";
    case GL_OUT_OF_MEMORY:
        return "out of memory";
    case GL_INVALID_FRAMEBUFFER_OPERATION:
        return "invalid framebuffer operation";
    default:
        return "error " + std::to_string(error);
    }
}

} // namespace

std::vector<std::string> takeOpenGLErrors()
{
    // A context that is lost may go on reporting.
    constexpr std::size_t enough = 16;
    std::vector<std::string> errors;
    for (GLenum error = glGetError(); error != GL_NO_ERROR && errors.size() < enough; error = glGetError())
        errors.push_back(nameOf(error));
    return errors;
}

void checkOpenGL(std::string_view occasion)
{
    std::string list;
    for (std::string const& error : takeOpenGLErrors())
        list += (list.empty() ? "" : ", ") + error;
    if (!list.empty())
        throw OpenGLError("OpenGL error " + std::string(occasion) + ": " + list);
}

} // namespace sgview
