#pragma once

#include <sys/syscall.h>
#include <sys/types.h>

#include <array>
#include <functional>
#include <ostream>
#include <vector>

/// Runs parts of a test in processes of their own.
namespace ChildProcess {

struct SystemCall {
    char const* name;
    long number;
};

/// That by which a file takes another one's place.
#ifdef SYS_rename
inline constexpr long renameNumber = SYS_rename;
#else
inline constexpr long renameNumber = SYS_renameat;
#endif

/// Those without which preferences cannot be saved.
inline constexpr std::array<SystemCall, 6> callsOfSaving{{
    {"flock", SYS_flock},
    {"fstat", SYS_newfstatat},
    {"fsync", SYS_fsync},
    {"openat", SYS_openat},
    {"write", SYS_write},
    {"rename", renameNumber},
}};

inline void PrintTo(SystemCall const& call, std::ostream* out)
{
    *out << call.name;
}

/// Starts a child that ends with `work`'s result as its exit status; 125 where it throws.
[[nodiscard]] pid_t start(std::function<int()> const& work);

/// The exit status of a child, or 128 and the number of the signal that ended it.
[[nodiscard]] int wait(pid_t child);

[[nodiscard]] inline int run(std::function<int()> const& work)
{
    return wait(start(work));
}

/// Makes this process an ordinary user's, if it is not; false where that is not to be had.
[[nodiscard]] bool becomeOrdinaryUser();

/// From now on the system call fails in this process with `error`; false where the kernel can't do that.
[[nodiscard]] bool failSystemCall(long number, int error);

/// How a run under killAtSystemCall() ended.
enum class Ending { killed, finished, notTraceable };

/// Runs `work` in a child that is killed at the n-th time that it enters or leaves a system call.
[[nodiscard]] Ending killAtSystemCall(int n, std::function<void()> const& work);

/// Runs `work` over and over, killing it at the first system call, then at the second, until it ends by
/// itself. `prepare` comes before each run and `check` after it.
/// \return false where a process may not trace its children
[[nodiscard]] bool killAtEverySystemCall(std::function<void()> const& prepare,
                                         std::function<void()> const& work,
                                         std::function<void()> const& check);

/// The numbers of the system calls that `work` makes in a child, in order; none where it cannot be traced.
[[nodiscard]] std::vector<long> systemCallsOf(std::function<void()> const& work);

} // namespace ChildProcess
