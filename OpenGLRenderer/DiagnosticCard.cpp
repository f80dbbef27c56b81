#include "OpenGLRenderer/DiagnosticCard.h"

#include "OpenGLRenderer/GLString.h"
#include "Utilities/Log.h"
#include "Utilities/Strings.h"

#include <algorithm>
#include <array>

namespace {

struct Limit {
    GLenum name;
    char const* text;
};

#define SG_LIMIT(name)                                                                                       \
    {                                                                                                        \
        name, #name                                                                                          \
    }
constexpr std::array<Limit, 12> programLimits{{
    SG_LIMIT(GL_MAX_PROGRAM_INSTRUCTIONS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_TEMPORARIES_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_NATIVE_TEMPORARIES_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_PARAMETERS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_NATIVE_PARAMETERS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_ATTRIBS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_NATIVE_ATTRIBS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_ADDRESS_REGISTERS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_NATIVE_ADDRESS_REGISTERS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_ENV_PARAMETERS_ARB),
    SG_LIMIT(GL_MAX_PROGRAM_LOCAL_PARAMETERS_ARB),
}};
#undef SG_LIMIT

GLint programLimit(GLenum name)
{
    GLint value = 0;
    glGetProgramivARB(GL_VERTEX_PROGRAM_ARB, name, &value);
    return value;
}

void logProgramLimits()
{
    static LogChannel const channel("opengl");
    for (Limit const& limit : programLimits)
        channel.write(limit.text, " = ", stringize(programLimit(limit.name)));
}

bool contains(std::string const& text, std::string const& part)
{
    return text.find(part) != std::string::npos;
}

std::string lowerCase(std::string text)
{
    for (char& letter : text)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return text;
}

} // namespace

std::string Diagnostic::getCard()
{
    std::string const vendor = getGLString(GL_VENDOR);
    std::string const renderer = getGLString(GL_RENDERER);
    return vendor + " / " + renderer + " / " + getGLString(GL_VERSION);
}

bool Diagnostic::hasExtension(std::string const& name)
{
    std::string const extensions = getGLString(GL_EXTENSIONS);
    return contains(extensions, name + ' ') || contains(extensions, ' ' + name);
}

bool Diagnostic::isATI8500to9250()
{
    std::string const renderer = lowerCase(getGLString(GL_RENDERER));
    if (contains(renderer, "firemv") && contains(renderer, "2400"))
        return true;
    if (!contains(renderer, "radeon") && !contains(renderer, "all-in-wonder"))
        return false;
    return std::ranges::any_of(std::array{"8500", "9000", "9100", "9200", "9250"},
                               [&](char const* model) { return contains(renderer, model); });
}

bool Diagnostic::tryVertexProgram()
{
    if (!hasExtension("ARB_vertex_program"))
        return false;
    logProgramLimits();
    if (programLimit(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB) == 0) // it would run on the processor
        return false;
    if (isATI8500to9250()) {
        static LogChannel const channel("opengl");
        channel.write("possibly lying ATI card detected--disabling vertex program");
        return false;
    }
    return true;
}

Capabilities Diagnostic::getCardCaps()
{
    Capabilities caps;
    caps.vbo = hasExtension("ARB_vertex_buffer_object");
    caps.vertexProgram = tryVertexProgram();
    caps.vertexShader = hasExtension("ARB_vertex_shader");
    caps.vertexShader = false; // switched off here, whatever the card says
    return caps;
}
