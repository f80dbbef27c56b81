#include "Benchmarks/Replay/Replayer.h"

#include "Benchmarks/Replay/CallKind.h"

#include <epoxy/gl.h> // before any other header of OpenGL

#include <GL/glu.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <tuple>
#include <type_traits>

namespace {

/// Where the answers of queries go, which nobody reads.
std::array<unsigned char, 1024> answers;

/// Takes the arguments of one call from the words of a recording.
class Arguments {
public:
    explicit Arguments(std::uint64_t const* word) : word_(word) {}

    template <typename Value>
    Value value()
    {
        Value value;
        std::memcpy(&value, word_++, sizeof value);
        return value;
    }

    /// A few values among the words.
    template <typename Pointer>
    Pointer values()
    {
        std::uint64_t const count = *word_++;
        auto const pointer = reinterpret_cast<Pointer>(word_);
        word_ += count;
        return pointer;
    }

    [[nodiscard]] std::uint64_t const* end() const { return word_; }

private:
    std::uint64_t const* word_;
};

enum class Pointers { TO_VALUES, TO_ARRAYS, TO_ANSWERS };

template <Pointers pointers, typename Parameter>
Parameter take(Arguments& arguments)
{
    if constexpr (!std::is_pointer_v<Parameter> || pointers == Pointers::TO_ARRAYS)
        return arguments.value<Parameter>();
    else if constexpr (pointers == Pointers::TO_VALUES)
        return arguments.values<Parameter>();
    else
        return reinterpret_cast<Parameter>(answers.data());
}

/// Makes one call.
/// \return the word behind its arguments
template <Pointers pointers, typename Result, typename... Parameters>
std::uint64_t const* call(Result (*entryPoint)(Parameters...), std::uint64_t const* word)
{
    Arguments arguments(word);
    // In braces, arguments are evaluated from left to right.
    std::tuple<Parameters...> const taken{take<pointers, Parameters>(arguments)...};
    std::apply(entryPoint, taken);
    return arguments.end();
}

void expect(bool same)
{
    if (!same)
        throw RecordingError("OpenGL gives out other names than it did when this was recorded");
}

std::uint64_t const* generate(void (*entryPoint)(GLsizei, GLuint*), std::uint64_t const* word)
{
    Arguments arguments(word);
    auto const count = arguments.value<GLsizei>();
    auto const* const expected = arguments.values<GLuint const*>();
    std::vector<GLuint> names(static_cast<std::size_t>(count));
    entryPoint(count, names.data());
    expect(std::equal(names.begin(), names.end(), expected));
    return arguments.end();
}

template <typename Result, typename... Parameters>
std::uint64_t const* callForAnswer(Result (*entryPoint)(Parameters...), std::uint64_t const* word)
{
    Arguments arguments(word);
    std::tuple<Parameters...> const taken{take<Pointers::TO_VALUES, Parameters>(arguments)...};
    Result const answer = std::apply(entryPoint, taken);
    expect(answer == arguments.value<Result>());
    return arguments.end();
}

void setShaderSource(GLhandleARB shader, GLcharARB const* source)
{
    glShaderSourceARB(shader, 1, &source, nullptr);
}

std::uint64_t const* play(CallKind kind, std::uint64_t const* word)
{
    switch (kind) {
#define SG_GL_CALL(name, ...)                                                                                \
    case CallKind::of_##name:                                                                                \
        return call<Pointers::TO_VALUES>(epoxy_##name, word);
#define SG_ARRAY_CALL(name, ...)                                                                             \
    case CallKind::of_##name:                                                                                \
        return call<Pointers::TO_ARRAYS>(epoxy_##name, word);
#define SG_QUERY_CALL(name, ...)                                                                             \
    case CallKind::of_##name:                                                                                \
        return call<Pointers::TO_ANSWERS>(epoxy_##name, word);
#define SG_NAMING_CALL(name)                                                                                 \
    case CallKind::of_##name:                                                                                \
        return generate(epoxy_##name, word);
#define SG_ANSWER_CALL(name, ...)                                                                            \
    case CallKind::of_##name:                                                                                \
        return callForAnswer(epoxy_##name, word);
#include "Benchmarks/Replay/Calls.def"
#include "Tests/RecordingGL/GLCalls.def"
    case CallKind::of_glShaderSourceARB:
        return call<Pointers::TO_VALUES>(&setShaderSource, word);
    case CallKind::of_gluBuild2DMipmaps:
        return call<Pointers::TO_ARRAYS>(&gluBuild2DMipmaps, word);
    }
    throw RecordingError("no such call");
}

} // namespace

Replayer::Replayer(Recording recording) : recording_(std::move(recording))
{
    auto const start = reinterpret_cast<std::uintptr_t>(recording_.arrays.data());
    for (std::uint64_t const address : recording_.addresses)
        recording_.words[address] += start;
}

void Replayer::play(std::size_t frame) const
{
    std::uint64_t const* word = recording_.words.data() + recording_.frames[frame];
    std::uint64_t const* const end = recording_.words.data() + recording_.frames[frame + 1];
    while (word != end)
        word = ::play(static_cast<CallKind>(*word), word + 1);
}

bool Replayer::showsRecordedPicture() const
{
    std::vector<unsigned char> picture(recording_.picture.size());
    glReadPixels(0, 0, static_cast<GLsizei>(recording_.width), static_cast<GLsizei>(recording_.height),
                 GL_RGBA, GL_UNSIGNED_BYTE, picture.data());
    return picture == recording_.picture;
}
