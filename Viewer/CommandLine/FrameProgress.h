#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include <unistd.h>

namespace sgview {

/// Tells a person how far the frames of a film are: at a terminal a bar, with the time left, that goes away
/// again; elsewhere a line now and then. Says nothing where the work is short.
class FrameProgress {
public:
    using Duration = std::chrono::duration<double>;

    /// How often a person wants to hear something.
    struct Pace {
        Duration terminal = std::chrono::milliseconds(200); ///< from one update of the bar to the next
        Duration elsewhere = std::chrono::seconds(10);      ///< from one line to the next
    };

    /// \param work    "walker.glb", without control characters
    /// \param stream  where to write; a negative one says nothing
    FrameProgress(std::string work, std::size_t frames, int stream = STDERR_FILENO)
        : FrameProgress(std::move(work), frames, stream, Pace())
    {
    }
    FrameProgress(std::string work, std::size_t frames, int stream, Pace const& pace);
    FrameProgress(FrameProgress const&) = delete;
    FrameProgress& operator=(FrameProgress const&) = delete;
    ~FrameProgress();

    /// One more frame is done.
    void advance();

private:
    using Clock = std::chrono::steady_clock;

    void write(std::string const& text) const;

    std::string work_;
    std::size_t frames_;
    std::size_t done_ = 0;
    int stream_;
    bool isTerminal_;
    Duration interval_;
    Clock::time_point start_ = Clock::now();
    Clock::time_point said_ = start_;
    bool shown_ = false; ///< a bar that has to go again
};

/// "[####......] 4 of 10, 3 min 5 s left".
/// \param done     at least 1, at most `frames`
/// \param elapsed  since the first frame was begun
[[nodiscard]] std::string progressBar(std::size_t done, std::size_t frames, FrameProgress::Duration elapsed);

/// "frame 4 of 10, 3 min 5 s left".
[[nodiscard]] std::string progressLine(std::size_t done, std::size_t frames, FrameProgress::Duration elapsed);

} // namespace sgview
