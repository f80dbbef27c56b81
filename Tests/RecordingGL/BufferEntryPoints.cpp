#include "Tests/RecordingGL/ArgumentText.h"
#include "Tests/RecordingGL/RecordingGL.h"
#include "Tests/RecordingGL/StandIn.h"

namespace {

// Element buffers hold integers, all others floats; both have four bytes.
std::string contentText(GLenum target, GLsizeiptrARB size, void const* data)
{
    if (!data)
        return "null";
    if (!RecordingGL::current().keepsCalls())
        return "array";
    std::size_t const count = static_cast<std::size_t>(size) / 4;
    if (target == GL_ELEMENT_ARRAY_BUFFER_ARB)
        return listText(static_cast<int const*>(data), count);
    return listText(static_cast<float const*>(data), count);
}

} // namespace

SG_STAND_IN(void, glGenBuffersARB, (GLsizei count, GLuint* names))
{
    RecordingGL& gl = RecordingGL::current();
    RecordingGL::generate(gl.editBuffers(), count, names);
    gl.record("glGenBuffersARB", {numberText(count), listText(names, static_cast<std::size_t>(count))});
}

SG_STAND_IN(void, glDeleteBuffersARB, (GLsizei count, GLuint const* names))
{
    RecordingGL& gl = RecordingGL::current();
    RecordingGL::remove(gl.editBuffers(), count, names);
    for (GLsizei i = 0; i < count; ++i) {
        gl.bufferContents.erase(names[i]);
        for (auto& [target, buffer] : gl.boundBuffers)
            if (buffer == names[i])
                buffer = 0;
    }
    gl.record("glDeleteBuffersARB", {numberText(count), listText(names, static_cast<std::size_t>(count))});
}

SG_STAND_IN(void, glBindBufferARB, (GLenum target, GLuint buffer))
{
    RecordingGL& gl = RecordingGL::current();
    gl.boundBuffers[target] = buffer;
    gl.record("glBindBufferARB", {enumText(target), numberText(buffer)});
}

SG_STAND_IN(void, glBufferDataARB, (GLenum target, GLsizeiptrARB size, void const* data, GLenum usage))
{
    RecordingGL& gl = RecordingGL::current();
    auto const* const bytes = static_cast<unsigned char const*>(data);
    gl.bufferContents[gl.boundBuffers[target]].assign(bytes, bytes + size);
    gl.record("glBufferDataARB", {enumText(target), numberText(static_cast<int>(size)),
                                  contentText(target, size, data), enumText(usage)});
}
