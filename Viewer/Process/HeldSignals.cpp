#include "Viewer/Process/HeldSignals.h"

#include <array>

namespace sgview {

namespace {

constexpr std::array ending{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// An ignored signal would wait like any other while it is held.
bool isIgnored(int signal)
{
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

HeldSignals::HeldSignals()
{
    ::sigemptyset(&held_);
    for (int const signal : ending)
        if (!isIgnored(signal))
            ::sigaddset(&held_, signal);
    ::pthread_sigmask(SIG_BLOCK, &held_, &before_);
}

HeldSignals::~HeldSignals()
{
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

bool HeldSignals::anyWaits() const
{
    sigset_t waiting;
    ::sigemptyset(&waiting);
    ::sigpending(&waiting);
    for (int const signal : ending)
        if (::sigismember(&held_, signal) == 1 && ::sigismember(&waiting, signal) == 1)
            return true;
    return false;
}

} // namespace sgview
