#include "Viewer/Platform/GraphicsLimits.h"

#include "Utilities/Strings.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>

namespace sgview {

namespace {

// What the techniques stand on, and what the renderer uses where it is there.
constexpr std::array<std::string_view, 8> extensionsThatMatter{"GL_ARB_multitexture",
                                                               "GL_ARB_vertex_buffer_object",
                                                               "GL_ARB_vertex_program",
                                                               "GL_ARB_shader_objects",
                                                               "GL_ARB_vertex_shader",
                                                               "GL_ARB_shading_language_100",
                                                               "GL_ARB_texture_non_power_of_two",
                                                               "GL_EXT_rescale_normal"};

std::string textOf(GLenum name)
{
    auto const* const text = reinterpret_cast<char const*>(glGetString(name));
    return text ? text : "";
}

int numberOf(GLenum name)
{
    GLint number = 0;
    glGetIntegerv(name, &number);
    return number;
}

std::string pixels(GLenum name)
{
    std::array<GLint, 2> size{};
    glGetIntegerv(name, size.data());
    return std::to_string(size[0]) + " x " + std::to_string(size[1]) + " pixels";
}

std::string widths(GLenum name)
{
    std::array<GLfloat, 2> range{};
    glGetFloatv(name, range.data());
    return stringize(range[0]) + " to " + stringize(range[1]) + " pixels";
}

/// What runs on the card itself, where it says so.
std::string ofPrograms(GLenum name)
{
    GLint number = 0;
    glGetProgramivARB(GL_VERTEX_PROGRAM_ARB, name, &number);
    return std::to_string(number);
}

} // namespace

GraphicsReport askGraphics()
{
    GraphicsReport report{textOf(GL_VENDOR), textOf(GL_RENDERER), textOf(GL_VERSION), "", {}, {}};
    std::vector<std::string> const offered = string_split(textOf(GL_EXTENSIONS), ' ');
    auto const offers = [&offered](std::string_view extension) {
        return std::ranges::find(offered, extension) != offered.end();
    };
    for (std::string_view const extension : extensionsThatMatter)
        report.extensions.emplace_back(extension, offers(extension));

    auto const add = [&report](std::string_view name, std::string value) {
        report.limits.emplace_back(name, std::move(value));
    };
    add("viewport", pixels(GL_MAX_VIEWPORT_DIMS));
    add("texture side", std::to_string(numberOf(GL_MAX_TEXTURE_SIZE)) + " pixels");
    if (offers("GL_ARB_multitexture"))
        add("texture units", std::to_string(numberOf(GL_MAX_TEXTURE_UNITS_ARB)));
    add("lights", std::to_string(numberOf(GL_MAX_LIGHTS)));
    add("depth", std::to_string(numberOf(GL_DEPTH_BITS)) + " bits");
    add("line width", widths(GL_ALIASED_LINE_WIDTH_RANGE));
    if (offers("GL_ARB_vertex_program")) {
        add("program parameters", ofPrograms(GL_MAX_PROGRAM_NATIVE_PARAMETERS_ARB));
        add("program instructions", ofPrograms(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB));
        add("program temporaries", ofPrograms(GL_MAX_PROGRAM_NATIVE_TEMPORARIES_ARB));
        add("vertex attributes", ofPrograms(GL_MAX_PROGRAM_ATTRIBS_ARB));
    }
    if (offers("GL_ARB_vertex_shader")) {
        report.shadingLanguage = textOf(GL_SHADING_LANGUAGE_VERSION_ARB);
        add("shader uniforms", std::to_string(numberOf(GL_MAX_VERTEX_UNIFORM_COMPONENTS_ARB)) + " numbers");
    }
    return report;
}

} // namespace sgview
