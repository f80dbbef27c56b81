#include "Tests/RecordingGL/ArgumentText.h"

#include <charconv>
#include <iterator>

namespace {

template <typename T>
std::string shortest(T value)
{
    char buffer[64];
    auto const result = std::to_chars(std::begin(buffer), std::end(buffer), value);
    return {std::begin(buffer), result.ptr};
}

} // namespace

std::string numberText(int value)
{
    return shortest(value);
}

std::string numberText(unsigned int value)
{
    return shortest(value);
}

std::string numberText(float value)
{
    return shortest(value);
}

std::string numberText(double value)
{
    return shortest(value);
}

std::string hexText(unsigned int value)
{
    char buffer[16];
    auto const result = std::to_chars(std::begin(buffer), std::end(buffer), value, 16);
    return "0x" + std::string(std::begin(buffer), result.ptr);
}

std::string quotedText(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

std::string booleanText(GLboolean value)
{
    return value == GL_FALSE ? "GL_FALSE" : "GL_TRUE";
}

std::string enumText(GLenum value)
{
    constexpr GLenum unitNames = 32;
    constexpr GLenum lightNames = 16;
    if (value >= GL_TEXTURE0_ARB && value < GL_TEXTURE0_ARB + unitNames)
        return "GL_TEXTURE" + numberText(value - GL_TEXTURE0_ARB) + "_ARB";
    if (value >= GL_LIGHT0 && value < GL_LIGHT0 + lightNames)
        return "GL_LIGHT" + numberText(value - GL_LIGHT0);
    switch (value) {
#define SG_GL_ENUM(name)                                                                                     \
    case name:                                                                                               \
        return #name;
#include "Tests/RecordingGL/GLEnums.def"
#undef SG_GL_ENUM
    default:
        return hexText(value);
    }
}

std::string primitiveText(GLenum value)
{
    switch (value) {
    case GL_LINE_LOOP:
        return "GL_LINE_LOOP";
    case GL_LINE_STRIP:
        return "GL_LINE_STRIP";
    case GL_TRIANGLES:
        return "GL_TRIANGLES";
    case GL_QUADS:
        return "GL_QUADS";
    default:
        return hexText(value);
    }
}

std::string clearMaskText(GLbitfield mask)
{
    switch (mask) {
    case GL_COLOR_BUFFER_BIT:
        return "GL_COLOR_BUFFER_BIT";
    case GL_DEPTH_BUFFER_BIT:
        return "GL_DEPTH_BUFFER_BIT";
    case GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT:
        return "GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT";
    default:
        return hexText(mask);
    }
}
