#include "Tests/RecordingGL/RecordingGL.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

RecordingGL* living = nullptr;

template <std::size_t Components>
std::vector<std::array<float, Components>> fetch(float const* array, std::vector<GLuint> const& vertices)
{
    std::vector<std::array<float, Components>> result(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i)
        std::copy_n(array + Components * vertices[i], Components, result[i].begin());
    return result;
}

} // namespace

RecordingGL::RecordingGL()
{
    living = this;
}

RecordingGL::~RecordingGL()
{
    living = nullptr;
}

RecordingGL& RecordingGL::current()
{
    if (!living) {
        std::fputs("an OpenGL call while no RecordingGL lives\n", stderr);
        std::abort();
    }
    return *living;
}

epoxy_resolver_failure_handler_t& RecordingGL::resolverFailureHandler()
{
    static epoxy_resolver_failure_handler_t handler = nullptr;
    return handler;
}

std::vector<std::string> RecordingGL::takeCalls()
{
    return std::exchange(calls_, {});
}

int RecordingGL::count(std::string_view entryPoint) const
{
    std::string const start = std::string(entryPoint) + '(';
    return static_cast<int>(std::count_if(calls_.begin(), calls_.end(),
                                          [&](std::string const& call) { return call.starts_with(start); }));
}

void RecordingGL::record(std::string_view entryPoint, std::initializer_list<std::string> arguments)
{
    std::string call = std::string(entryPoint) + '(';
    for (std::string const* argument = arguments.begin(); argument != arguments.end(); ++argument)
        call += (argument == arguments.begin() ? "" : ", ") + *argument;
    calls_.push_back(call + ')');
}

std::string RecordingGL::pointerText(void const* pointer) const
{
    if (!pointer)
        return "null";
    auto const label = labels_.find(pointer);
    return label == labels_.end() ? "array" : label->second;
}

GLubyte const* RecordingGL::string(GLenum name) const
{
    auto const found = strings_.find(name);
    if (found == strings_.end() || !found->second)
        return nullptr;
    return reinterpret_cast<GLubyte const*>(found->second->c_str());
}

void RecordingGL::answerIntegers(GLenum name, GLint* values) const
{
    auto const found = integers_.find(name);
    if (found != integers_.end())
        std::copy(found->second.begin(), found->second.end(), values);
}

GLenum RecordingGL::takeError()
{
    if (errors_.empty())
        return GL_NO_ERROR;
    GLenum const error = errors_.front();
    errors_.pop_front();
    return error;
}

void RecordingGL::answerPixels(void* data, std::size_t size) const
{
    std::copy_n(pixels_.begin(), std::min(size, pixels_.size()), static_cast<unsigned char*>(data));
}

void RecordingGL::generate(Names& names, GLsizei count, GLuint* result) const
{
    for (GLsizei i = 0; i < count; ++i) {
        result[i] = static_cast<GLuint>(++names.generated);
        names.live.insert(result[i]);
    }
}

void RecordingGL::remove(Names& names, GLsizei count, GLuint const* removed)
{
    for (GLsizei i = 0; i < count; ++i)
        names.deleted += static_cast<int>(names.live.erase(removed[i]));
}

void RecordingGL::draw(std::vector<GLuint> const& vertices)
{
    Draw result;
    if (enabledArrays.contains(GL_VERTEX_ARRAY))
        result.positions = fetch<3>(positionPointer, vertices);
    if (enabledArrays.contains(GL_NORMAL_ARRAY))
        result.normals = fetch<3>(normalPointer, vertices);
    for (GLenum const unit : enabledTextureCoordinates)
        result.textureCoordinates[unit] = fetch<2>(textureCoordinatePointers[unit], vertices);
    draws_.push_back(std::move(result));
}
