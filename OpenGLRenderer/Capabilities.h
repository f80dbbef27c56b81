#pragma once

/// Which of the three techniques that need the graphics card the renderer may use. All false, the safe
/// default, is the fixed-function pipeline with skinning on the processor and drawing from client arrays.
struct Capabilities {
    bool vbo = false;           ///< geometry is drawn from buffer objects
    bool vertexProgram = false; ///< skinning by an ARB vertex program
    bool vertexShader = false;  ///< skinning by a vertex shader; ignored where vertexProgram is set

    constexpr bool operator==(Capabilities const&) const = default;
};
