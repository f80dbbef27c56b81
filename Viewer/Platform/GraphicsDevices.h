#pragma once

#include <string>
#include <vector>

namespace sgview {

/// Something that can draw without a screen.
struct GraphicsDevice {
    std::string name;    ///< in OpenGL's words: "llvmpipe (LLVM 15.0.6, 256 bits)"
    std::string driver;  ///< "swrast", and the device's file where it has one
    std::string problem; ///< why it cannot be used; empty where it can
};

/// In the order of the system's numbers for them, from 0; empty where it numbers none. No context may be
/// open.
[[nodiscard]] std::vector<GraphicsDevice> listGraphicsDevices();

/// Contexts without a screen are the device's of a number from now on, in this process and those it starts.
/// \throws ContextError  where there is no such
void useGraphicsDevice(unsigned number);

} // namespace sgview
