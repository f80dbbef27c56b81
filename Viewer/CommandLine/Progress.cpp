#include "Viewer/CommandLine/Progress.h"

#include <csignal>
#include <utility>

namespace sgview {

namespace {

constexpr char const* eraseLine = "\r\033[K";

/// Those that come to the process are for the thread that does the work.
void leaveSignalsToOthers()
{
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

} // namespace

Progress::Progress(std::string work, int terminal, std::chrono::milliseconds patience)
    : work_(std::move(work)), terminal_(terminal), patience_(patience)
{
    if (::isatty(terminal_))
        thread_ = std::jthread([this](std::stop_token const& stop) { run(stop); });
}

Progress::~Progress() = default;

void Progress::say(std::string work)
{
    std::lock_guard const lock(mutex_);
    work_ = std::move(work);
}

void Progress::run(std::stop_token const& stop)
{
    leaveSignalsToOthers();
    using Clock = std::chrono::steady_clock;
    Clock::time_point const start = Clock::now();
    bool shown = false;
    std::unique_lock lock(mutex_);
    while (!stopped_.wait_for(lock, stop, patience_, [] { return false; }) && !stop.stop_requested()) {
        auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start);
        write(eraseLine + ("sgview: " + work_) + ", " + std::to_string(seconds.count()) + " s");
        shown = true;
    }
    if (shown)
        write(eraseLine);
}

void Progress::write(std::string const& text) const
{
    // What a terminal does not take is not worth a word.
    [[maybe_unused]] ssize_t const written = ::write(terminal_, text.data(), text.size());
}

} // namespace sgview
