#include "Tests/RecordingGL/RecordingGL.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <utility>

namespace {

RecordingGL* living = nullptr;

template <std::size_t Components>
std::vector<std::array<float, Components>> fetch(void const* source, std::vector<GLuint> const& vertices)
{
    auto const* const array = static_cast<float const*>(source);
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
    counts_.clear();
    return std::exchange(calls_, {});
}

int RecordingGL::count(std::string_view entryPoint) const
{
    auto const found = counts_.find(entryPoint);
    return found == counts_.end() ? 0 : found->second;
}

int RecordingGL::count() const
{
    return std::accumulate(counts_.begin(), counts_.end(), 0,
                           [](int sum, auto const& entry) { return sum + entry.second; });
}

void RecordingGL::record(std::string_view entryPoint, std::initializer_list<std::string> arguments)
{
    ++counts_[std::string(entryPoint)];
    if (!keepsCalls_ && !watcher_)
        return;
    std::string call = std::string(entryPoint) + '(';
    for (std::string const* argument = arguments.begin(); argument != arguments.end(); ++argument)
        call += (argument == arguments.begin() ? "" : ", ") + *argument;
    call += ')';
    if (watcher_)
        watcher_(call);
    if (keepsCalls_)
        calls_.push_back(std::move(call));
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

void RecordingGL::answerDoubles(GLenum name, GLdouble* values) const
{
    auto const found = doubles_.find(name);
    if (found != doubles_.end())
        std::copy(found->second.begin(), found->second.end(), values);
}

GLint RecordingGL::programLimit(GLenum name, GLint unknown) const
{
    auto const found = programLimits_.find(name);
    return found == programLimits_.end() ? unknown : found->second;
}

GLint RecordingGL::uniformLocation(std::string const& name) const
{
    auto const found = locations_.find(name);
    return found == locations_.end() ? -1 : found->second;
}

std::string RecordingGL::sourceText(ArraySource const& source) const
{
    if (source.buffer == 0)
        return pointerText(source.pointer);
    return "offset " + std::to_string(reinterpret_cast<std::uintptr_t>(source.pointer));
}

void const* RecordingGL::read(ArraySource const& source) const
{
    void const* place = source.pointer;
    if (source.buffer != 0) {
        auto const contents = bufferContents.find(source.buffer);
        bool const missing = contents == bufferContents.end() || contents->second.empty();
        place =
            missing ? nullptr : contents->second.data() + reinterpret_cast<std::uintptr_t>(source.pointer);
    }
    if (!place) {
        std::fputs("a draw call that reads where nothing is\n", stderr);
        std::abort();
    }
    return place;
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

void RecordingGL::generate(Names& names, GLsizei count, GLuint* result)
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
    if (!vertices.empty()) {
        if (enabledArrays.contains(GL_VERTEX_ARRAY))
            result.positions = fetch<3>(read(positionSource), vertices);
        if (enabledArrays.contains(GL_NORMAL_ARRAY))
            result.normals = fetch<3>(read(normalSource), vertices);
        for (GLenum const unit : enabledTextureCoordinates)
            result.textureCoordinates[unit] = fetch<2>(read(textureCoordinateSources[unit]), vertices);
        for (GLuint const index : enabledAttributes)
            result.attributes[index] = fetch<4>(read(attributeSources[index]), vertices);
    }
    draws_.push_back(std::move(result));
}
