// Takes the place of libepoxy's function pointers in the program that this is loaded into: each call is
// recorded, then made.

#include "Benchmarks/Replay/Recorder.h"

#include <GL/glu.h>
#include <SDL2/SDL_video.h>
#include <dlfcn.h>
#include <epoxy/gl.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// What an argument is recorded as. Calls.def and GLCalls.def say it by these names.
template <typename Value>
Value enumText(Value value)
{
    return value;
}
constexpr auto numberText = [](auto value) { return value; };
constexpr auto booleanText = numberText;
constexpr auto clearMaskText = numberText;
constexpr auto hexText = numberText;
constexpr auto primitiveText = numberText;

template <typename Value>
Pointee listText(Value const* values, std::size_t count)
{
    return {values, count * sizeof(Value)};
}
Pointee quotedText(char const* text)
{
    return {text, std::strlen(text) + 1};
}

template <typename Parameter, typename Argument>
Parameter passed(Argument const& argument)
{
    if constexpr (std::is_same_v<Argument, Pointee>)
        return static_cast<Parameter>(argument.data);
    else
        return static_cast<Parameter>(argument);
}

template <typename Parameter, typename Argument>
void keep(Recorder& recorder, Argument const& argument)
{
    if constexpr (std::is_same_v<Argument, Pointee>)
        recorder.keep(argument);
    else
        recorder.keep(static_cast<Parameter>(argument));
}

[[noreturn]] void fail(std::exception const& error)
{
    std::fprintf(stderr, "recorder: %s\n", error.what());
    std::_Exit(EXIT_FAILURE);
}

/// What a call means for the arrays that later ones read.
template <CallKind kind>
void follow(ClientArrays&, auto...)
{
}
template <>
void follow<CallKind::of_glBindBufferARB>(ClientArrays& arrays, GLenum target, GLuint buffer)
{
    arrays.bind(target, buffer);
}
template <>
void follow<CallKind::of_glBufferDataARB>(ClientArrays& arrays, GLenum target, GLsizeiptrARB size,
                                          void const* data, GLenum)
{
    arrays.fill(target, data, static_cast<std::size_t>(size));
}
template <>
void follow<CallKind::of_glClientActiveTextureARB>(ClientArrays& arrays, GLenum unit)
{
    arrays.selectUnit(unit);
}
template <>
void follow<CallKind::of_glEnableClientState>(ClientArrays& arrays, GLenum array)
{
    arrays.enable(array);
}
template <>
void follow<CallKind::of_glDisableClientState>(ClientArrays& arrays, GLenum array)
{
    arrays.disable(array);
}
template <>
void follow<CallKind::of_glEnableVertexAttribArrayARB>(ClientArrays& arrays, GLuint index)
{
    arrays.enableAttribute(index);
}
template <>
void follow<CallKind::of_glDisableVertexAttribArrayARB>(ClientArrays& arrays, GLuint index)
{
    arrays.disableAttribute(index);
}
template <>
void follow<CallKind::of_glDrawArrays>(ClientArrays& arrays, GLenum, GLint first, GLsizei count)
{
    arrays.draw(first, count);
}
template <>
void follow<CallKind::of_glDrawElements>(ClientArrays& arrays, GLenum, GLsizei count, GLenum type,
                                         void const* indices)
{
    arrays.drawElements(count, type, indices);
}
template <>
void follow<CallKind::of_glVertexPointer>(ClientArrays& arrays, GLint size, GLenum type, GLsizei stride,
                                          void const* pointer)
{
    arrays.point(GL_VERTEX_ARRAY, size, type, stride, pointer);
}
template <>
void follow<CallKind::of_glNormalPointer>(ClientArrays& arrays, GLenum type, GLsizei stride,
                                          void const* pointer)
{
    arrays.point(GL_NORMAL_ARRAY, 3, type, stride, pointer);
}
template <>
void follow<CallKind::of_glTexCoordPointer>(ClientArrays& arrays, GLint size, GLenum type, GLsizei stride,
                                            void const* pointer)
{
    arrays.point(GL_TEXTURE_COORD_ARRAY, size, type, stride, pointer);
}
template <>
void follow<CallKind::of_glVertexAttribPointerARB>(ClientArrays& arrays, GLuint index, GLint size,
                                                   GLenum type, GLboolean, GLsizei stride,
                                                   void const* pointer)
{
    arrays.pointAttribute(index, size, type, stride, pointer);
}

constexpr bool draws(CallKind kind)
{
    return kind == CallKind::of_glDrawArrays || kind == CallKind::of_glDrawElements ||
           kind == CallKind::of_glEnd;
}

/// Records a call and makes it.
template <CallKind kind, typename Result, typename... Parameters, typename... Arguments>
Result pass(Result (*real)(Parameters...), Arguments const&... arguments)
try {
    Recorder& recorder = Recorder::current();
    if constexpr (kind == CallKind::of_glFinish) {
        real();
        recorder.endFrame();
    } else {
        recorder.begin(kind);
        (keep<Parameters>(recorder, arguments), ...);
        follow<kind>(recorder.arrays(), passed<Parameters>(arguments)...);
        if constexpr (draws(kind))
            recorder.noteDraw();
        return real(passed<Parameters>(arguments)...);
    }
} catch (std::exception const& error) {
    fail(error);
}

/// The answer is thrown away in a replay, and so is every pointer to where it goes.
template <CallKind kind, typename Result, typename... Parameters, typename... Arguments>
Result ask(Result (*real)(Parameters...), Arguments... arguments)
{
    Recorder& recorder = Recorder::current();
    recorder.begin(kind);
    [[maybe_unused]] auto const keepValue = [&](auto argument) {
        if constexpr (!std::is_pointer_v<decltype(argument)>)
            recorder.keep(argument);
    };
    (keepValue(arguments), ...);
    return real(arguments...);
}

template <CallKind kind>
void generate(void (*real)(GLsizei, GLuint*), GLsizei count, GLuint* names)
{
    real(count, names);
    Recorder& recorder = Recorder::current();
    recorder.begin(kind);
    recorder.keep(count);
    recorder.keep(listText(names, static_cast<std::size_t>(count)));
}

template <typename Function>
Function real(char const* name)
{
    auto const found = reinterpret_cast<Function>(SDL_GL_GetProcAddress(name));
    if (!found)
        fail(RecordingError(std::string(name) + " is not there"));
    return found;
}

// GLU's rows are padded to OpenGL's default alignment of 4.
std::size_t pictureSize(GLsizei width, GLsizei height, GLenum format)
{
    std::size_t const components = format == GL_RGBA ? 4 : 3;
    return (static_cast<std::size_t>(width) * components + 3) / 4 * 4 * static_cast<std::size_t>(height);
}

} // namespace

// The name of an entry point is not handed from macro to macro: epoxy's would rename it.
#define SG_GL_CALL(name, parameters, ...)                                                                    \
    static void recorded_##name parameters                                                                   \
    {                                                                                                        \
        static auto const next = real<decltype(epoxy_##name)>(#name);                                        \
        pass<CallKind::of_##name>(next __VA_OPT__(, ) __VA_ARGS__);                                          \
    }                                                                                                        \
    decltype(epoxy_##name) epoxy_##name = recorded_##name;
#define SG_QUERY_CALL(name, parameters, ...)                                                                 \
    static auto recorded_##name parameters                                                                   \
    {                                                                                                        \
        static auto const next = real<decltype(epoxy_##name)>(#name);                                        \
        return ask<CallKind::of_##name>(next __VA_OPT__(, ) __VA_ARGS__);                                    \
    }                                                                                                        \
    decltype(epoxy_##name) epoxy_##name = recorded_##name;
#define SG_NAMING_CALL(name)                                                                                 \
    static void recorded_##name(GLsizei count, GLuint* names)                                                \
    {                                                                                                        \
        static auto const next = real<decltype(epoxy_##name)>(#name);                                        \
        generate<CallKind::of_##name>(next, count, names);                                                   \
    }                                                                                                        \
    decltype(epoxy_##name) epoxy_##name = recorded_##name;
#define SG_ANSWER_CALL(name, parameters, ...)                                                                \
    static auto recorded_##name parameters                                                                   \
    {                                                                                                        \
        static auto const next = real<decltype(epoxy_##name)>(#name);                                        \
        auto const answer = pass<CallKind::of_##name>(next __VA_OPT__(, ) __VA_ARGS__);                      \
        Recorder::current().keep(answer);                                                                    \
        return answer;                                                                                       \
    }                                                                                                        \
    decltype(epoxy_##name) epoxy_##name = recorded_##name;
#define SG_ARRAY_CALL SG_GL_CALL
#include "Benchmarks/Replay/Calls.def"
#include "Tests/RecordingGL/GLCalls.def"

static void recorded_glShaderSourceARB(GLhandleARB shader, GLsizei count, GLcharARB const** texts,
                                       GLint const* lengths)
{
    static auto const next = real<decltype(epoxy_glShaderSourceARB)>("glShaderSourceARB");
    std::string whole;
    for (GLsizei i = 0; i < count; ++i)
        whole += lengths ? std::string(texts[i], static_cast<std::size_t>(lengths[i])) : texts[i];
    Recorder& recorder = Recorder::current();
    recorder.begin(CallKind::of_glShaderSourceARB);
    recorder.keep(shader);
    recorder.keep(quotedText(whole.c_str()));
    next(shader, count, texts, lengths);
}
decltype(epoxy_glShaderSourceARB) epoxy_glShaderSourceARB = recorded_glShaderSourceARB;

// What it calls itself goes past libepoxy.
GLint gluBuild2DMipmaps(GLenum target, GLint components, GLsizei width, GLsizei height, GLenum format,
                        GLenum type, void const* data)
{
    static auto const next = reinterpret_cast<decltype(&gluBuild2DMipmaps)>(::dlsym(RTLD_NEXT, __func__));
    Recorder& recorder = Recorder::current();
    recorder.begin(CallKind::of_gluBuild2DMipmaps);
    recorder.keep(target);
    recorder.keep(components);
    recorder.keep(width);
    recorder.keep(height);
    recorder.keep(format);
    recorder.keep(type);
    recorder.keep(data);
    recorder.keepArray(data, pictureSize(width, height, format));
    return next(target, components, width, height, format, type, data);
}
