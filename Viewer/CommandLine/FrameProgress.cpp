#include "Viewer/CommandLine/FrameProgress.h"

#include <cmath>
#include <utility>

namespace sgview {

namespace {

constexpr char const* eraseLine = "\r\033[K";

/// As coarse as a guess deserves.
std::string inWords(FrameProgress::Duration time)
{
    auto const seconds = static_cast<long>(std::ceil(time.count()));
    if (seconds < 60)
        return std::to_string(seconds) + " s";
    long const minutes = seconds / 60;
    if (minutes < 60)
        return std::to_string(minutes) + " min " + std::to_string(seconds % 60) + " s";
    return std::to_string(minutes / 60) + " h " + std::to_string(minutes % 60) + " min";
}

std::string progressText(std::size_t done, std::size_t frames, FrameProgress::Duration elapsed)
{
    FrameProgress::Duration const left =
        elapsed * (static_cast<double>(frames - done) / static_cast<double>(done));
    return std::to_string(done) + " of " + std::to_string(frames) + ", " + inWords(left) + " left";
}

} // namespace

FrameProgress::FrameProgress(std::string work, std::size_t frames, int stream, Pace const& pace)
    : work_(std::move(work)),
      frames_(frames),
      stream_(stream),
      isTerminal_(::isatty(stream) != 0),
      interval_(isTerminal_ ? pace.terminal : pace.elsewhere)
{
}

FrameProgress::~FrameProgress()
{
    if (shown_)
        write(eraseLine);
}

void FrameProgress::advance()
{
    ++done_;
    Clock::time_point const now = Clock::now();
    if (now - said_ < interval_ || stream_ < 0)
        return;
    said_ = now;
    if (isTerminal_)
        write(eraseLine + ("sgview: " + work_) + " " + progressBar(done_, frames_, now - start_));
    else
        write("sgview: " + work_ + ": " + progressLine(done_, frames_, now - start_) + "\n");
    shown_ = isTerminal_;
}

void FrameProgress::write(std::string const& text) const
{
    // What a terminal does not take is not worth a word.
    [[maybe_unused]] ssize_t const written = ::write(stream_, text.data(), text.size());
}

std::string progressBar(std::size_t done, std::size_t frames, FrameProgress::Duration elapsed)
{
    constexpr std::size_t width = 20;
    std::size_t const filled = width * done / frames;
    return "[" + std::string(filled, '#') + std::string(width - filled, '.') + "] " +
           progressText(done, frames, elapsed);
}

std::string progressLine(std::size_t done, std::size_t frames, FrameProgress::Duration elapsed)
{
    return "frame " + progressText(done, frames, elapsed);
}

} // namespace sgview
