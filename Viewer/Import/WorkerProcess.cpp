#include "Viewer/Import/WorkerProcess.h"

#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/ImportWorker.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sgview {

namespace {

constexpr int notStarted = 127;

void resetSignals()
{
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    for (int number = 1; number < NSIG; ++number)
        ::sigaction(number, &usual, nullptr);
    sigset_t nothing;
    ::sigemptyset(&nothing);
    ::sigprocmask(SIG_SETMASK, &nothing, nullptr);
}

/// Standard streams to nowhere, the pipe to where the worker expects it, everything else closed.
bool arrangeDescriptors(int pipe)
{
    constexpr int firstSpare = 16;
    int const kept = ::fcntl(pipe, F_DUPFD, firstSpare);
    int const nowhere = ::open("/dev/null", O_RDWR);
    if (kept < 0 || nowhere < 0)
        return false;
    for (int stream = 0; stream <= 2; ++stream)
        if (::dup2(nowhere, stream) < 0)
            return false;
    if (::dup2(kept, workerDescriptor) < 0)
        return false;
    if (::close_range(workerDescriptor + 1, ~0U, 0) != 0) {
        constexpr int usualMost = 4096;
        for (int other = workerDescriptor + 1; other < usualMost; ++other)
            ::close(other);
    }
    return true;
}

/// Runs in the forked child, where only calls that are safe in a signal handler are allowed.
[[noreturn]] void becomeWorker(int pipe, pid_t parent, char* const* arguments)
{
    ::setpgid(0, 0);
    resetSignals();
    bool const ready =
        ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::getppid() == parent && arrangeDescriptors(pipe);
    if (ready)
        ::execv("/proc/self/exe", arguments);
    ::_exit(notStarted);
}

} // namespace

WorkerProcess::WorkerProcess(std::vector<std::string> const& arguments)
{
    std::vector<std::string> texts = arguments;
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw ImportError(ImportFailure::crashed, "importer", std::strerror(errno));
    pid_t const parent = ::getpid();
    process_ = ::fork();
    if (process_ == 0)
        becomeWorker(ends[1], parent, pointers.data());
    int const error = errno;
    ::close(ends[1]);
    pipe_ = ends[0];
    if (process_ < 0) {
        ::close(pipe_);
        throw ImportError(ImportFailure::crashed, "importer", std::strerror(error));
    }
}

WorkerProcess::~WorkerProcess()
{
    ::close(pipe_);
    if (process_ > 0)
        reap();
}

WorkerProcess::End WorkerProcess::reap()
{
    // While the child is not reaped, its number cannot have become another group's.
    ::kill(-process_, SIGKILL);
    ::kill(process_, SIGKILL);
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    return {true, WIFEXITED(status) ? WEXITSTATUS(status) : 0, WIFSIGNALED(status) ? WTERMSIG(status) : 0};
}

WorkerProcess::Output WorkerProcess::read(std::vector<std::uint8_t>& received, std::chrono::milliseconds wait)
{
    pollfd watched{pipe_, POLLIN, 0};
    if (::poll(&watched, 1, static_cast<int>(std::min<std::int64_t>(wait.count(), 3'600'000))) <= 0)
        return Output::nothing;
    std::array<std::uint8_t, 65536> piece;
    ssize_t const count = ::read(pipe_, piece.data(), piece.size());
    if (count < 0)
        return errno == EINTR ? Output::nothing : Output::ended;
    received.insert(received.end(), piece.begin(), piece.begin() + count);
    return count == 0 ? Output::ended : Output::some;
}

WorkerProcess::End WorkerProcess::waitUntil(std::chrono::steady_clock::time_point deadline)
{
    constexpr std::chrono::milliseconds pause{2};
    while (process_ > 0) {
        siginfo_t ended{};
        int const failed = ::waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT);
        if (failed == 0 && ended.si_pid == process_)
            return reap();
        if (failed != 0 && errno != EINTR) {
            process_ = -1; // the host lets its children vanish unseen
            return {true, 0, 0};
        }
        if (std::chrono::steady_clock::now() > deadline)
            break;
        std::this_thread::sleep_for(pause);
    }
    return {};
}

std::uint64_t WorkerProcess::residentMemory() const
{
    std::ifstream file("/proc/" + std::to_string(process_) + "/statm");
    std::uint64_t total = 0;
    std::uint64_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace sgview
