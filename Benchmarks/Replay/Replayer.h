#pragma once

#include "Benchmarks/Replay/Recording.h"

/// Makes the calls of a recording again, and nothing else. Needs a fresh current context of the recording's
/// size.
class Replayer {
public:
    explicit Replayer(Recording recording);

    [[nodiscard]] std::size_t setupFrames() const { return recording_.setupFrames; }
    [[nodiscard]] std::size_t frameCount() const { return recording_.frameCount(); }

    /// The calls of a frame; those before it must have been played.
    /// \throws RecordingError  when OpenGL gives out other names than it did
    void play(std::size_t frame) const;

    /// Whether what is drawn now is what the recorded program drew, byte for byte. Meant for after the last
    /// frame.
    [[nodiscard]] bool showsRecordedPicture() const;

private:
    Recording recording_;
};
