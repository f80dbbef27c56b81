#pragma once

#include "Benchmarks/Replay/ArrayStore.h"
#include "Benchmarks/Replay/CallKind.h"
#include "Benchmarks/Replay/ClientArrays.h"
#include "Benchmarks/Replay/Recording.h"

#include <cstring>
#include <type_traits>

/// Values that an argument points to.
struct Pointee {
    void const* data;
    std::size_t size; ///< bytes
};

/// Writes down the calls of the program it was loaded into, up to the end of a frame that the environment
/// names; then saves the recording and ends the process. A frame ends where the program waits for OpenGL to
/// finish.
///
///     SG_RECORD_FILE     where to
///     SG_RECORD_SETUP    frames to record before those to be repeated, 3 if not given
///     SG_RECORD_FRAMES   frames to be repeated, 1 if not given
class Recorder {
public:
    [[nodiscard]] static Recorder& current();

    void begin(CallKind kind) { recording_.words.push_back(static_cast<std::uint64_t>(kind)); }
    template <typename Value>
    requires std::is_scalar_v<Value>
    void keep(Value value) { std::memcpy(&recording_.words.emplace_back(), &value, sizeof value); }
    void keep(Pointee const& values);
    /// The word kept last is the address of an array of so many bytes.
    void keepArray(void const* data, std::size_t size);
    /// Something was drawn.
    void noteDraw() { hasDrawn_ = true; }
    /// The program waits for OpenGL to finish: a frame ends, if anything was drawn.
    void endFrame();

    [[nodiscard]] ClientArrays& arrays() { return arrays_; }

private:
    Recorder();
    void finish();

    Recording recording_;
    ArrayStore store_{recording_};
    ClientArrays arrays_{recording_, store_};
    std::filesystem::path file_;
    std::size_t wantedFrames_ = 0;
    bool hasDrawn_ = false;
};
