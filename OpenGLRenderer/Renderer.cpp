#include "OpenGLRenderer/Renderer.h"

#include "OpenGLRenderer/Capabilities.h"
#include "OpenGLRenderer/GLString.h"
#include "OpenGLRenderer/GraphicsDiagnostic.h"
#include "OpenGLRenderer/PassName.h"
#include "OpenGLRenderer/PassRunner.h"
#include "OpenGLRenderer/Strategist.h"
#include "Utilities/Log.h"
#include "Utilities/Strings.h"

#include <algorithm>

constinit smart_ptr<GLRenderer> GLRenderer::renderer;

namespace {

void logStrings()
{
    static LogChannel const versionChannel("opengl");
    versionChannel.write("GL_VERSION: ", getGLString(GL_VERSION));
    static LogChannel const rendererChannel("opengl");
    rendererChannel.write("GL_RENDERER: ", getGLString(GL_RENDERER));
    static LogChannel const extensionsChannel("opengl");
    extensionsChannel.write("GL_EXTENSIONS: ", getGLString(GL_EXTENSIONS));
}

void logLimits()
{
    GLint dimensions[2] = {0, 0};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, dimensions);
    static LogChannel const viewportChannel("opengl");
    viewportChannel.write("GL_MAX_VIEWPORT_DIMS: (", stringize(dimensions[0]), ", ", stringize(dimensions[1]),
                          ")");

    GLint modelviewDepth = 0;
    glGetIntegerv(GL_MAX_MODELVIEW_STACK_DEPTH, &modelviewDepth);
    static LogChannel const modelviewChannel("opengl");
    modelviewChannel.write("GL_MAX_MODELVIEW_STACK_DEPTH: (", stringize(modelviewDepth), ")");

    GLint projectionDepth = 0;
    glGetIntegerv(GL_MAX_PROJECTION_STACK_DEPTH, &projectionDepth);
    static LogChannel const projectionChannel("opengl");
    projectionChannel.write("GL_MAX_PROJECTION_STACK_DEPTH: (", stringize(projectionDepth), ")");
}

int usableTextureUnits()
{
    std::string const extensions = getGLString(GL_EXTENSIONS);
    std::string const card = getGLString(GL_RENDERER);
    // Matrox cards advertise multitexturing but are held to one unit.
    if (extensions.find("ARB_multitexture") == std::string::npos || card.find("Matrox") != std::string::npos)
        return 1;
    GLint units = 0;
    glGetIntegerv(GL_MAX_TEXTURE_UNITS_ARB, &units);
    return units;
}

char const* errorMessage(GLenum code)
{
    switch (code) {
    case GL_INVALID_ENUM:
        return "Invalid enum.";
    case GL_INVALID_VALUE:
        return "Invalid value.";
    case GL_INVALID_OPERATION:
        return "Invalid operation.";
    case GL_STACK_OVERFLOW:
        return "Stack overflow.";
    case GL_STACK_UNDERFLOW:
        return "Stack underflow.";
    case GL_OUT_OF_MEMORY:
        return "Out of memory.";
    default:
        return "UNKNOWN ERROR CODE.";
    }
}

std::chrono::nanoseconds timeOf(SGNodeVisitor& pass, PassRunner& runner)
{
    glFinish();
    auto const start = std::chrono::steady_clock::now();
    runner.run(pass);
    glFinish();
    return std::chrono::steady_clock::now() - start;
}

} // namespace

GLRenderer::GLRenderer()
{
    renderer = smart_ptr<GLRenderer>(this);
    logStrings();
    logLimits();
    maxTextureUnits = usableTextureUnits();
}

void GLRenderer::render(smart_ptr<SGRootNode> root)
{
    if (strategy.empty())
        strategy = Strategist::computeStrategy(Capabilities());
    PassRunner runner(*root, strategy, survey);
    try {
        runStrategy(runner);
    } catch (...) {
        runner.putBack();
        throw;
    }
}

void GLRenderer::runStrategy(PassRunner& runner)
{
    // A pass may replace the list: its size is asked each time, and the visitor kept.
    for (std::size_t i = 0; i < strategy.size(); ++i) {
        smart_ptr<SGNodeVisitor> const visitor = strategy[i];
        if (auto const sink = passTimeSink) // a copy: it may take itself away
            sink(passName(*visitor), timeOf(*visitor, runner));
        else
            runner.run(*visitor);
    }
}

void GLRenderer::readPixels(int x, int y, int width, int height, PixelFormat format, unsigned char* data)
{
    glFlush();
    glReadPixels(x, y, width, height, getGLFormat(format), GL_UNSIGNED_BYTE, data);

    // Four bytes a pixel whatever the format: the interface says so. OpenGL has refused a negative size.
    std::ptrdiff_t const rowSize = static_cast<std::ptrdiff_t>(std::max(width, 0)) * 4;
    for (int i = 0; i < height / 2; ++i) {
        unsigned char* const lower = data + rowSize * i;
        std::swap_ranges(lower, lower + rowSize, data + rowSize * (height - 1 - i));
    }
}

bool GLRenderer::isDiagnosticNeeded() const
{
    return GraphicsDiagnostic::isDiagnosticNeeded();
}

void GLRenderer::readDiagnosticResults()
{
    GraphicsDiagnostic::readDiagnosticResults();
}

void GLRenderer::runDiagnostic()
{
    GraphicsDiagnostic::runDiagnostic();
}

GLenum GLRenderer::getGLFormat(PixelFormat format)
{
    switch (format) {
    case LUMINANCE:
        return GL_LUMINANCE;
    case LUMINANCE_ALPHA:
        return GL_LUMINANCE_ALPHA;
    case RGB:
        return GL_RGB;
    case RGBA:
        return GL_RGBA;
    default:
        return GL_ALPHA;
    }
}

void GLRenderer::logError(std::string_view where)
{
    GLenum const code = glGetError();
    if (code == GL_NO_ERROR)
        return;
    static LogChannel const channel("error");
    channel.write(where, " GL Error: ", errorMessage(code));
}
