#include "Viewer/Platform/Technique.h"

#include <algorithm>

namespace sgview {

Technique techniqueWith(bool vbo, bool program, bool shader)
{
    auto const fits = [&](Technique technique) {
        return usesVBO(technique) == vbo && usesProgram(technique) == program &&
               usesShader(technique) == (shader && !program);
    };
    return *std::ranges::find_if(allTechniques, fits);
}

std::string_view nameOf(Technique technique)
{
    switch (technique) {
    case Technique::plain:
        return "plain";
    case Technique::vbo:
        return "vbo";
    case Technique::program:
        return "program";
    case Technique::programAndVBO:
        return "program+vbo";
    case Technique::shader:
        return "shader";
    case Technique::shaderAndVBO:
        return "shader+vbo";
    }
    return "unknown";
}

std::vector<std::string_view> extensionsFor(Technique technique)
{
    std::vector<std::string_view> extensions;
    if (usesVBO(technique))
        extensions.emplace_back("GL_ARB_vertex_buffer_object");
    if (usesProgram(technique))
        extensions.emplace_back("GL_ARB_vertex_program");
    if (usesShader(technique))
        extensions.insert(extensions.end(), {"GL_ARB_shader_objects", "GL_ARB_vertex_shader"});
    return extensions;
}

std::vector<std::string_view> assetsFor(Technique technique)
{
    if (usesProgram(technique))
        return {"Shaders/animationVertexProgram.txt", "Shaders/defaultVertexProgram.txt"};
    if (usesShader(technique))
        return {"Shaders/animationVertexShader.txt"};
    return {};
}

} // namespace sgview
