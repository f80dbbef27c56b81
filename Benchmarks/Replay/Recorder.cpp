#include "Benchmarks/Replay/Recorder.h"

#include <SDL2/SDL_video.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

std::size_t numberFrom(char const* variable, std::size_t fallback)
{
    char const* const text = std::getenv(variable);
    std::string_view const digits = text ? text : "";
    std::from_chars(digits.data(), digits.data() + digits.size(), fallback);
    return fallback;
}

} // namespace

Recorder& Recorder::current()
{
    // Never destroyed: the process may still call OpenGL while it ends.
    static auto* const recorder = new Recorder;
    return *recorder;
}

Recorder::Recorder()
{
    char const* const file = std::getenv("SG_RECORD_FILE");
    file_ = file ? file : "recording";
    recording_.setupFrames = numberFrom("SG_RECORD_SETUP", 3);
    wantedFrames_ = recording_.setupFrames + numberFrom("SG_RECORD_FRAMES", 1);
    recording_.frames.push_back(0);
    // This process alone is recorded, not those that it starts.
    unsetenv("LD_PRELOAD");
}

void Recorder::keep(Pointee const& values)
{
    std::size_t const count = (values.size + sizeof(std::uint64_t) - 1) / sizeof(std::uint64_t);
    std::vector<std::uint64_t>& words = recording_.words;
    words.push_back(count);
    words.resize(words.size() + count);
    if (count > 0)
        std::memcpy(&words[words.size() - count], values.data, values.size);
}

void Recorder::keepArray(void const* data, std::size_t size)
{
    if (data)
        store_.keepAt(recording_.words.size() - 1, data, size);
}

void Recorder::endFrame()
{
    if (!hasDrawn_)
        return;
    hasDrawn_ = false;
    recording_.frames.push_back(recording_.words.size());
    if (recording_.frameCount() == wantedFrames_)
        finish();
}

void Recorder::finish()
{
    auto const readPixels = reinterpret_cast<PFNGLREADPIXELSPROC>(SDL_GL_GetProcAddress("glReadPixels"));
    auto const getIntegers = reinterpret_cast<PFNGLGETINTEGERVPROC>(SDL_GL_GetProcAddress("glGetIntegerv"));
    std::array<GLint, 4> viewport{};
    getIntegers(GL_VIEWPORT, viewport.data());
    recording_.width = static_cast<std::uint64_t>(viewport[2]);
    recording_.height = static_cast<std::uint64_t>(viewport[3]);
    recording_.picture.resize(4 * recording_.width * recording_.height);
    readPixels(0, 0, viewport[2], viewport[3], GL_RGBA, GL_UNSIGNED_BYTE, recording_.picture.data());
    int status = EXIT_SUCCESS;
    try {
        recording_.save(file_);
    } catch (RecordingError const& error) {
        std::fprintf(stderr, "recorder: %s\n", error.what());
        status = EXIT_FAILURE;
    }
    std::_Exit(status);
}
