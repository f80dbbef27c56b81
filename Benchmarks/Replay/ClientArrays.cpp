#include "Benchmarks/Replay/ClientArrays.h"

#include <algorithm>
#include <span>

namespace {

std::size_t sizeOf(GLenum type)
{
    switch (type) {
    case GL_BYTE:
    case GL_UNSIGNED_BYTE:
        return 1;
    case GL_SHORT:
    case GL_UNSIGNED_SHORT:
        return 2;
    case GL_DOUBLE:
        return 8;
    default:
        return 4;
    }
}

template <typename Index>
std::size_t largest(void const* indices, std::size_t count)
{
    return std::ranges::max(std::span(static_cast<Index const*>(indices), count));
}

std::size_t largestIndex(GLenum type, void const* indices, std::size_t count)
{
    switch (type) {
    case GL_UNSIGNED_BYTE:
        return largest<GLubyte>(indices, count);
    case GL_UNSIGNED_SHORT:
        return largest<GLushort>(indices, count);
    default:
        return largest<GLuint>(indices, count);
    }
}

} // namespace

void ClientArrays::fill(GLenum target, void const* data, std::size_t size)
{
    if (!data)
        return;
    store_.keepAt(recording_.words.size() - 2, data, size);
    if (target != GL_ELEMENT_ARRAY_BUFFER_ARB)
        return;
    auto const* const bytes = static_cast<unsigned char const*>(data);
    indexBuffers_[bound_[target]].assign(bytes, bytes + size);
}

void ClientArrays::point(GLenum array, GLint components, GLenum type, GLsizei stride, void const* pointer)
{
    point(slot(array), components, type, stride, pointer);
}

void ClientArrays::pointAttribute(GLuint index, GLint components, GLenum type, GLsizei stride,
                                  void const* pointer)
{
    point(attribute(index), components, type, stride, pointer);
}

void ClientArrays::point(Slot slot, GLint components, GLenum type, GLsizei stride, void const* pointer)
{
    std::size_t const size = static_cast<std::size_t>(components) * sizeOf(type);
    std::size_t const step = stride ? static_cast<std::size_t>(stride) : size;
    sources_[slot] = {bound_[GL_ARRAY_BUFFER_ARB], size, step, pointer, recording_.words.size() - 1, 0};
}

void ClientArrays::draw(GLint first, GLsizei count)
{
    if (count > 0)
        keepUpTo(static_cast<std::size_t>(first) + static_cast<std::size_t>(count) - 1);
}

void ClientArrays::drawElements(GLsizei count, GLenum type, void const* indices)
{
    auto const n = static_cast<std::size_t>(count);
    if (n == 0)
        return;
    GLuint const buffer = bound_[GL_ELEMENT_ARRAY_BUFFER_ARB];
    void const* start = indices;
    if (buffer) {
        start = indexBuffers_.at(buffer).data() + reinterpret_cast<std::uintptr_t>(indices);
    } else {
        store_.keepAt(recording_.words.size() - 1, indices, n * sizeOf(type));
    }
    bool const readsMemory = std::ranges::any_of(
        enabled_, [&](Slot const& slot) { return sources_.contains(slot) && sources_[slot].buffer == 0; });
    if (readsMemory)
        keepUpTo(largestIndex(type, start, n));
}

void ClientArrays::keepUpTo(std::size_t vertex)
{
    for (Slot const& slot : enabled_) {
        auto const source = sources_.find(slot);
        if (source != sources_.end() && source->second.buffer == 0)
            keep(source->second, vertex * source->second.stride + source->second.elementSize);
    }
}

void ClientArrays::keep(Source& source, std::size_t size)
{
    size = std::max(size, source.kept);
    if (source.kept == size && recording_.words[source.word] != store_.keep(source.pointer, size))
        throw RecordingError("an array changed while OpenGL was pointed to it");
    if (source.kept == 0)
        store_.keepAt(source.word, source.pointer, size);
    else
        recording_.words[source.word] = store_.keep(source.pointer, size);
    source.kept = size;
}
