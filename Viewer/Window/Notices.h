#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace sgview {

/// What the window has to tell in passing. Successes go after a while; what went wrong stays longer.
class Notices {
public:
    using Time = std::chrono::steady_clock::time_point;

    struct Notice {
        std::string text;
        bool isError = false;
        Time end;
    };

    void tell(std::string text, std::chrono::seconds life = std::chrono::seconds(4));
    void warn(std::string text);
    void clear() { notices_.clear(); }

    /// Drops those whose time is over.
    /// \return whether there were any
    bool expire(Time now);

    /// The oldest first.
    [[nodiscard]] std::vector<Notice> const& all() const { return notices_; }

private:
    void add(std::string text, bool isError, std::chrono::seconds life);

    std::vector<Notice> notices_;
};

} // namespace sgview
