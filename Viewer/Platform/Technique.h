#pragma once

#include <array>
#include <string_view>
#include <vector>

namespace sgview {

/// How the renderer draws: from client arrays or from buffer objects, and with bones on the processor, in a
/// vertex program or in a vertex shader.
enum class Technique { plain, vbo, program, programAndVBO, shader, shaderAndVBO };

inline constexpr std::array<Technique, 6> allTechniques{Technique::plain,   Technique::vbo,
                                                        Technique::program, Technique::programAndVBO,
                                                        Technique::shader,  Technique::shaderAndVBO};

[[nodiscard]] constexpr bool usesVBO(Technique technique)
{
    return technique == Technique::vbo || technique == Technique::programAndVBO ||
           technique == Technique::shaderAndVBO;
}
[[nodiscard]] constexpr bool usesProgram(Technique technique)
{
    return technique == Technique::program || technique == Technique::programAndVBO;
}
[[nodiscard]] constexpr bool usesShader(Technique technique)
{
    return technique == Technique::shader || technique == Technique::shaderAndVBO;
}

/// The one that uses what is granted; the vertex program goes before the shader.
[[nodiscard]] Technique techniqueWith(bool vbo, bool program, bool shader);

/// As a person types it: "program+vbo".
[[nodiscard]] std::string_view nameOf(Technique technique);

/// The OpenGL extensions it needs, by their whole names.
[[nodiscard]] std::vector<std::string_view> extensionsFor(Technique technique);

/// The files it needs, as AssetManager knows them.
[[nodiscard]] std::vector<std::string_view> assetsFor(Technique technique);

} // namespace sgview
