#pragma once

#include <csignal>

namespace sgview {

/// Holds back the signals by which a person or the system ends a program, until there is order again: one
/// that has come takes its effect when this goes. For the calling thread; others must not take them instead.
class HeldSignals {
public:
    HeldSignals();
    HeldSignals(HeldSignals const&) = delete;
    HeldSignals& operator=(HeldSignals const&) = delete;
    ~HeldSignals();

    /// Whether one has come.
    [[nodiscard]] bool anyWaits() const;

private:
    sigset_t held_{};
    sigset_t before_{};
};

} // namespace sgview
