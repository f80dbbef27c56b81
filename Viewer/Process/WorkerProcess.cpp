#include "Viewer/Process/WorkerProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

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

/// A pipe whose ends go when another program is started.
struct Pipe {
    Pipe()
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::system_error(errno, std::generic_category(), "a pipe to a process of its own");
        out = ends[0];
        in = ends[1];
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;
    ~Pipe()
    {
        for (int const end : {out, in})
            if (end >= 0)
                ::close(end);
    }

    int out = -1;
    int in = -1;
};

/// Standard streams to nowhere, or standard error to a pipe of its own; the pipe to where the worker expects
/// it, everything else closed.
bool arrangeDescriptors(int pipe, int errorPipe)
{
    constexpr int firstSpare = 16;
    int const kept = ::fcntl(pipe, F_DUPFD, firstSpare);
    int const nowhere = ::open("/dev/null", O_RDWR);
    if (kept < 0 || nowhere < 0)
        return false;
    int const errors = errorPipe < 0 ? nowhere : ::fcntl(errorPipe, F_DUPFD, firstSpare);
    if (::dup2(nowhere, STDIN_FILENO) < 0 || ::dup2(nowhere, STDOUT_FILENO) < 0 ||
        ::dup2(errors, STDERR_FILENO) < 0)
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
[[noreturn]] void becomeWorker(int pipe, int errorPipe, pid_t parent, char* const* arguments)
{
    ::setpgid(0, 0);
    resetSignals();
    bool const ready = ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::getppid() == parent &&
                       arrangeDescriptors(pipe, errorPipe);
    if (ready)
        ::execv("/proc/self/exe", arguments);
    ::_exit(notStarted);
}

} // namespace

void sendToParent(std::span<std::uint8_t const> bytes)
{
    while (!bytes.empty()) {
        ssize_t const count = ::write(workerDescriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            ::_exit(1);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

void sendToParent(std::string_view text)
{
    sendToParent({reinterpret_cast<std::uint8_t const*>(text.data()), text.size()});
}

WorkerProcess::WorkerProcess(std::vector<std::string> const& arguments, Errors errors)
{
    std::vector<std::string> texts = arguments;
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    Pipe pipe;
    std::optional<Pipe> errorPipe;
    if (errors == Errors::kept) {
        errorPipe.emplace();
        // Noise that nobody reads in time is lost rather than waited for.
        ::fcntl(errorPipe->in, F_SETFL, O_NONBLOCK);
    }
    pid_t const parent = ::getpid();
    process_ = ::fork();
    if (process_ == 0)
        becomeWorker(pipe.in, errorPipe ? errorPipe->in : -1, parent, pointers.data());
    if (process_ < 0)
        throw std::system_error(errno, std::generic_category(), "a process of its own");
    pipe_ = std::exchange(pipe.out, -1);
    if (errorPipe)
        errorPipe_ = std::exchange(errorPipe->out, -1);
}

WorkerProcess::~WorkerProcess()
{
    ::close(pipe_);
    if (errorPipe_ >= 0)
        ::close(errorPipe_);
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
    pollfd watched{errorPipe_, POLLIN, 0};
    while (errorPipe_ >= 0 && ::poll(&watched, 1, 0) > 0)
        keepErrors();
    return {true, WIFEXITED(status) ? WEXITSTATUS(status) : 0, WIFSIGNALED(status) ? WTERMSIG(status) : 0};
}

WorkerProcess::Output WorkerProcess::read(std::vector<std::uint8_t>& received, std::chrono::milliseconds wait)
{
    std::array<pollfd, 2> watched{{{pipe_, POLLIN, 0}, {errorPipe_, POLLIN, 0}}};
    if (::poll(watched.data(), watched.size(),
               static_cast<int>(std::min<std::int64_t>(wait.count(), 3'600'000))) <= 0)
        return Output::nothing;
    if (watched[1].revents != 0)
        keepErrors();
    if (watched[0].revents == 0)
        return Output::nothing;
    std::array<std::uint8_t, 65536> piece;
    ssize_t const count = ::read(pipe_, piece.data(), piece.size());
    if (count < 0)
        return errno == EINTR ? Output::nothing : Output::ended;
    received.insert(received.end(), piece.begin(), piece.begin() + count);
    return count == 0 ? Output::ended : Output::some;
}

void WorkerProcess::keepErrors()
{
    constexpr std::size_t enough = 4096;
    std::array<char, enough> piece;
    ssize_t const count = ::read(errorPipe_, piece.data(), piece.size());
    if (count > 0) {
        errors_.append(piece.data(), static_cast<std::size_t>(count));
        if (errors_.size() > enough)
            errors_.erase(0, errors_.size() - enough);
    } else if (count == 0 || errno != EINTR) {
        ::close(std::exchange(errorPipe_, -1));
    }
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
