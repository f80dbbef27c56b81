#include "Tests/RecordingGL/ArgumentText.h"
#include "Tests/RecordingGL/RecordingGL.h"
#include "Tests/RecordingGL/StandIn.h"

#include <GL/glu.h>

#include <numeric>
#include <utility>

// Not by way of SG_STAND_IN: epoxy's macros would rename `name` on the way.
#define SG_GL_CALL(name, parameters, ...)                                                                    \
    static void standIn_##name parameters                                                                    \
    {                                                                                                        \
        RecordingGL::current().record(#name, {__VA_ARGS__});                                                 \
    }                                                                                                        \
    decltype(epoxy_##name) epoxy_##name = StandIn<&standIn_##name>::call;
#include "Tests/RecordingGL/GLCalls.def"
#undef SG_GL_CALL

namespace {

std::size_t componentsOf(GLenum format)
{
    switch (format) {
    case GL_RGB:
        return 3;
    case GL_RGBA:
        return 4;
    case GL_LUMINANCE_ALPHA:
        return 2;
    default:
        return 1;
    }
}

// Rows are padded to OpenGL's default alignment of 4.
std::size_t pictureSize(GLsizei width, GLsizei height, GLenum format)
{
    std::size_t const row = (static_cast<std::size_t>(width) * componentsOf(format) + 3) / 4 * 4;
    return row * static_cast<std::size_t>(height);
}

std::string bytesText(void const* data, std::size_t size)
{
    auto const* const bytes = static_cast<unsigned char const*>(data);
    std::vector<int> const values(bytes, bytes + size);
    return listText(values.data(), values.size());
}

} // namespace

epoxy_resolver_failure_handler_t epoxy_set_resolver_failure_handler(epoxy_resolver_failure_handler_t handler)
{
    return std::exchange(RecordingGL::resolverFailureHandler(), handler);
}

SG_STAND_IN(GLenum, glGetError, (void))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glGetError", {});
    return gl.takeError();
}

SG_STAND_IN(GLubyte const*, glGetString, (GLenum name))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glGetString", {enumText(name)});
    return gl.string(name);
}

SG_STAND_IN(void, glGetIntegerv, (GLenum name, GLint* values))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glGetIntegerv", {enumText(name)});
    gl.answerIntegers(name, values);
}

SG_STAND_IN(void, glGetDoublev, (GLenum name, GLdouble* values))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glGetDoublev", {enumText(name)});
    gl.answerDoubles(name, values);
}

SG_STAND_IN(void, glReadPixels,
            (GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type, void* data))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glReadPixels", {numberText(x), numberText(y), numberText(width), numberText(height),
                               enumText(format), enumText(type), gl.pointerText(data)});
    gl.answerPixels(data, pictureSize(width, height, format));
}

SG_STAND_IN(void, glGenTextures, (GLsizei count, GLuint* names))
{
    RecordingGL& gl = RecordingGL::current();
    gl.generate(gl.editTextures(), count, names);
    gl.record("glGenTextures", {numberText(count), listText(names, static_cast<std::size_t>(count))});
}

SG_STAND_IN(void, glDeleteTextures, (GLsizei count, GLuint const* names))
{
    RecordingGL& gl = RecordingGL::current();
    RecordingGL::remove(gl.editTextures(), count, names);
    gl.record("glDeleteTextures", {numberText(count), listText(names, static_cast<std::size_t>(count))});
}

SG_STAND_IN(void, glClientActiveTextureARB, (GLenum unit))
{
    RecordingGL& gl = RecordingGL::current();
    gl.clientUnit = unit;
    gl.record("glClientActiveTextureARB", {enumText(unit)});
}

SG_STAND_IN(void, glEnableClientState, (GLenum array))
{
    RecordingGL& gl = RecordingGL::current();
    if (array == GL_TEXTURE_COORD_ARRAY)
        gl.enabledTextureCoordinates.insert(gl.clientUnit);
    else
        gl.enabledArrays.insert(array);
    gl.record("glEnableClientState", {enumText(array)});
}

SG_STAND_IN(void, glDisableClientState, (GLenum array))
{
    RecordingGL& gl = RecordingGL::current();
    if (array == GL_TEXTURE_COORD_ARRAY)
        gl.enabledTextureCoordinates.erase(gl.clientUnit);
    else
        gl.enabledArrays.erase(array);
    gl.record("glDisableClientState", {enumText(array)});
}

SG_STAND_IN(void, glVertexPointer, (GLint size, GLenum type, GLsizei stride, void const* pointer))
{
    RecordingGL& gl = RecordingGL::current();
    gl.positionSource = gl.arraySource(pointer);
    gl.record("glVertexPointer",
              {numberText(size), enumText(type), numberText(stride), gl.sourceText(gl.arraySource(pointer))});
}

SG_STAND_IN(void, glNormalPointer, (GLenum type, GLsizei stride, void const* pointer))
{
    RecordingGL& gl = RecordingGL::current();
    gl.normalSource = gl.arraySource(pointer);
    gl.record("glNormalPointer",
              {enumText(type), numberText(stride), gl.sourceText(gl.arraySource(pointer))});
}

SG_STAND_IN(void, glTexCoordPointer, (GLint size, GLenum type, GLsizei stride, void const* pointer))
{
    RecordingGL& gl = RecordingGL::current();
    gl.textureCoordinateSources[gl.clientUnit] = gl.arraySource(pointer);
    gl.record("glTexCoordPointer",
              {numberText(size), enumText(type), numberText(stride), gl.sourceText(gl.arraySource(pointer))});
}

SG_STAND_IN(void, glDrawArrays, (GLenum primitive, GLint first, GLsizei count))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glDrawArrays", {primitiveText(primitive), numberText(first), numberText(count)});
    if (!gl.keepsCalls())
        return;
    std::vector<GLuint> vertices(static_cast<std::size_t>(count));
    std::iota(vertices.begin(), vertices.end(), static_cast<GLuint>(first));
    gl.draw(vertices);
}

SG_STAND_IN(void, glDrawElements, (GLenum primitive, GLsizei count, GLenum type, void const* indices))
{
    RecordingGL& gl = RecordingGL::current();
    RecordingGL::ArraySource const source{gl.boundBuffers[GL_ELEMENT_ARRAY_BUFFER_ARB], indices};
    std::vector<GLuint> vertices;
    if (count > 0 && gl.keepsCalls()) {
        auto const* const start = static_cast<GLuint const*>(gl.read(source));
        vertices.assign(start, start + count);
    }
    bool const printed = source.buffer == 0 && gl.keepsCalls();
    gl.record("glDrawElements",
              {primitiveText(primitive), numberText(count), enumText(type),
               printed ? listText(vertices.data(), vertices.size()) : gl.sourceText(source)});
    if (gl.keepsCalls())
        gl.draw(vertices);
}

// GLU's own needs a context.
GLint gluBuild2DMipmaps(GLenum target, GLint internalFormat, GLsizei width, GLsizei height, GLenum format,
                        GLenum type, void const* data)
{
    RecordingGL::current().record("gluBuild2DMipmaps",
                                  {enumText(target), numberText(internalFormat), numberText(width),
                                   numberText(height), enumText(format), enumText(type),
                                   bytesText(data, pictureSize(width, height, format))});
    return 0;
}
