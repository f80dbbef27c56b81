#pragma once

#include "Benchmarks/Replay/ArrayStore.h"

#include <epoxy/gl.h>

#include <map>
#include <set>
#include <utility>
#include <vector>

/// Follows where a program points OpenGL's vertex arrays, and puts what a draw reads from memory into a
/// recording: how far an array is read is known only then.
class ClientArrays {
public:
    ClientArrays(Recording& recording, ArrayStore& store) : recording_(recording), store_(store) {}

    void bind(GLenum target, GLuint buffer) { bound_[target] = buffer; }
    /// A buffer is filled; the pointer is the last word but one recorded.
    void fill(GLenum target, void const* data, std::size_t size);
    void selectUnit(GLenum unit) { unit_ = unit; }
    void enable(GLenum array) { enabled_.insert(slot(array)); }
    void disable(GLenum array) { enabled_.erase(slot(array)); }
    void enableAttribute(GLuint index) { enabled_.insert(attribute(index)); }
    void disableAttribute(GLuint index) { enabled_.erase(attribute(index)); }

    /// An array is pointed to; the pointer is the last word recorded.
    void point(GLenum array, GLint components, GLenum type, GLsizei stride, void const* pointer);
    void pointAttribute(GLuint index, GLint components, GLenum type, GLsizei stride, void const* pointer);

    /// Vertices in succession are drawn.
    /// \throws RecordingError
    void draw(GLint first, GLsizei count);
    /// Vertices by their indices are drawn; the pointer is the last word recorded.
    /// \throws RecordingError
    void drawElements(GLsizei count, GLenum type, void const* indices);

private:
    /// An array, and the texture unit or index of an attribute.
    using Slot = std::pair<GLenum, GLuint>;
    struct Source {
        GLuint buffer = 0;
        std::size_t elementSize = 0;
        std::size_t stride = 0;
        void const* pointer = nullptr;
        std::size_t word = 0; ///< of the recording, where the pointer stands
        std::size_t kept = 0; ///< bytes
    };

    [[nodiscard]] Slot slot(GLenum array) const
    {
        return {array, array == GL_TEXTURE_COORD_ARRAY ? unit_ : 0};
    }
    [[nodiscard]] static Slot attribute(GLuint index) { return {GL_VERTEX_ATTRIB_ARRAY_POINTER_ARB, index}; }
    void point(Slot slot, GLint components, GLenum type, GLsizei stride, void const* pointer);
    void keepUpTo(std::size_t vertex);
    void keep(Source& source, std::size_t size);

    Recording& recording_;
    ArrayStore& store_;
    std::map<GLenum, GLuint> bound_;
    std::map<GLuint, std::vector<unsigned char>> indexBuffers_;
    GLenum unit_ = GL_TEXTURE0_ARB;
    std::set<Slot> enabled_;
    std::map<Slot, Source> sources_;
};
