#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// OpenGL refused something. what() is one line.
class OpenGLError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Takes all errors that wait in the current context, by name, the oldest first.
[[nodiscard]] std::vector<std::string> takeOpenGLErrors();

/// Throws OpenGLError, naming `occasion` ("while drawing"), if errors wait in the current context.
void checkOpenGL(std::string_view occasion);

} // namespace sgview
