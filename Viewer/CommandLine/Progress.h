#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include <unistd.h>

namespace sgview {

/// Tells a person at a terminal what takes so long, on one line that goes away again. Says nothing where the
/// work is short or nobody watches.
class Progress {
public:
    /// \param work      "loading duck.dae"
    /// \param terminal  where to write, if it is one
    /// \param patience  how long the work may take before it is mentioned, and from one update to the next
    explicit Progress(std::string work, int terminal = STDERR_FILENO,
                      std::chrono::milliseconds patience = std::chrono::seconds(1));
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    /// What takes so long from now on.
    void say(std::string work);

private:
    void run(std::stop_token const& stop);
    void write(std::string const& text) const;

    std::string work_;
    int terminal_;
    std::chrono::milliseconds patience_;
    std::mutex mutex_;
    std::condition_variable_any stopped_;
    std::jthread thread_; ///< not started where nobody watches
};

} // namespace sgview
