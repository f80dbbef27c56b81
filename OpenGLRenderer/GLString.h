#pragma once

#include <epoxy/gl.h>

#include <string>

/// What glGetString answers; a null answer reads as empty.
[[nodiscard]] std::string getGLString(GLenum name);
