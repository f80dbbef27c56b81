#pragma once

#include <epoxy/gl.h>

#include <cstddef>
#include <string>
#include <string_view>

/// How RecordingGL prints arguments. Numbers are as short as reads back the same.
[[nodiscard]] std::string numberText(int value);
[[nodiscard]] std::string numberText(unsigned int value);
[[nodiscard]] std::string numberText(float value);
[[nodiscard]] std::string numberText(double value);
[[nodiscard]] std::string hexText(unsigned int value);
[[nodiscard]] std::string quotedText(std::string_view text);
[[nodiscard]] std::string booleanText(GLboolean value);

/// An enumerant by name; GL_TEXTUREi_ARB and GL_LIGHTi too; one that is not known as a hexadecimal number.
[[nodiscard]] std::string enumText(GLenum value);
[[nodiscard]] std::string primitiveText(GLenum value);
[[nodiscard]] std::string clearMaskText(GLbitfield mask);

/// "{1, 2, 3}".
template <typename T>
[[nodiscard]] std::string listText(T const* values, std::size_t count)
{
    std::string text = "{";
    for (std::size_t i = 0; i < count; ++i)
        text += (i == 0 ? "" : ", ") + numberText(values[i]);
    return text + '}';
}
