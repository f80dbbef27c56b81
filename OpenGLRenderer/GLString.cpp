#include "OpenGLRenderer/GLString.h"

std::string getGLString(GLenum name)
{
    GLubyte const* const text = glGetString(name);
    return text ? reinterpret_cast<char const*>(text) : "";
}
