#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <vector>

/// A recording cannot be made, read or replayed. what() says why in one line.
class RecordingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Every call of OpenGL that a program made from its first to the end of some frame, with what they pointed
/// to.
struct Recording {
    /// The calls: a CallKind, then a word an argument. Where an argument points to a few values, their number
    /// of words and the values themselves.
    std::vector<std::uint64_t> words;
    /// Which words stand for addresses: they hold offsets into `arrays`.
    std::vector<std::uint64_t> addresses;
    /// Vertices, indices, pictures; each once, at multiples of 64 bytes.
    std::vector<unsigned char> arrays;
    /// Where in `words` each frame starts, and the end of the last.
    std::vector<std::uint64_t> frames;
    /// How many of the frames come once, before those to be repeated.
    std::uint64_t setupFrames = 0;
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    /// What the last frame left, RGBA from the bottom row up.
    std::vector<unsigned char> picture;

    static constexpr std::size_t arrayAlignment = 64;

    [[nodiscard]] std::size_t frameCount() const { return frames.size() - 1; }

    /// \throws RecordingError
    void save(std::filesystem::path const& file) const;
    /// \throws RecordingError  also where the file is not a whole recording of this build's
    [[nodiscard]] static Recording load(std::filesystem::path const& file);
};
