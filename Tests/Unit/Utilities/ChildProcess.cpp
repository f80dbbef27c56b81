#include "Tests/Unit/Utilities/ChildProcess.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>

namespace {

constexpr int thrown = 125;

int waitStatus(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
    }
    return status;
}

/// A child that is stopped before it does its work; -1 where it cannot be traced.
pid_t startTraced(std::function<void()> const& work)
{
    pid_t const child = ChildProcess::start([&] {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            return thrown;
        raise(SIGSTOP);
        work();
        return 0;
    });
    if (!WIFSTOPPED(waitStatus(child)))
        return -1;
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    return child;
}

/// Lets a traced child run until it enters or leaves a system call; false once it has ended.
bool continueToSystemCall(pid_t child)
{
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    return WIFSTOPPED(waitStatus(child));
}

} // namespace

pid_t ChildProcess::start(std::function<int()> const& work)
{
    pid_t const child = fork();
    if (child != 0)
        return child;
    int result = thrown;
    try {
        result = work();
    } catch (...) {
    }
    _exit(result);
}

int ChildProcess::wait(pid_t child)
{
    int const status = waitStatus(child);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

bool ChildProcess::becomeOrdinaryUser()
{
    constexpr unsigned int nobody = 65534;
    return geteuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0);
}

bool ChildProcess::failSystemCall(long number, int error)
{
    auto const nr = static_cast<unsigned int>(number);
    auto const answer = static_cast<unsigned int>(error) & SECCOMP_RET_DATA;
    std::array<sock_filter, 4> filter{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, nr, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | answer),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    sock_fprog const program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

ChildProcess::Ending ChildProcess::killAtSystemCall(int n, std::function<void()> const& work)
{
    pid_t const child = startTraced(work);
    if (child < 0)
        return Ending::notTraceable;
    for (int i = 0; i < n; ++i)
        if (!continueToSystemCall(child))
            return Ending::finished;
    kill(child, SIGKILL);
    waitStatus(child);
    return Ending::killed;
}

bool ChildProcess::killAtEverySystemCall(std::function<void()> const& prepare,
                                         std::function<void()> const& work,
                                         std::function<void()> const& check)
{
    auto ending = Ending::killed;
    for (int n = 0; ending == Ending::killed; ++n) {
        prepare();
        ending = killAtSystemCall(n, work);
        if (ending != Ending::notTraceable)
            check();
    }
    return ending == Ending::finished;
}

std::vector<long> ChildProcess::systemCallsOf(std::function<void()> const& work)
{
    std::vector<long> calls;
    pid_t const child = startTraced(work);
    while (child >= 0 && continueToSystemCall(child)) {
        __ptrace_syscall_info info{};
        ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof(info), &info);
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY)
            calls.push_back(static_cast<long>(info.entry.nr));
    }
    return calls;
}
