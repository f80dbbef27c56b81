#include "Viewer/Import/WorkerLimits.h"

#include <array>
#include <cerrno>
#include <cstddef>

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>

namespace sgview {

namespace {

bool limit(__rlimit_resource resource, rlim_t soft, rlim_t hard)
{
    rlimit current{};
    if (::getrlimit(resource, &current) != 0)
        return false;
    rlimit const wanted{std::min(soft, current.rlim_max), std::min(hard, current.rlim_max)};
    return ::setrlimit(resource, &wanted) == 0;
}

#if defined(__x86_64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t architecture = 0;
#endif

constexpr std::array forbidden{
#ifdef __NR_fork
    __NR_fork,
#endif
#ifdef __NR_vfork
    __NR_vfork,
#endif
    __NR_clone,    __NR_clone3,    __NR_execve,           __NR_execveat,
    __NR_socket,   __NR_ptrace,    __NR_process_vm_readv, __NR_process_vm_writev,
    __NR_unlinkat, __NR_renameat2,
};

/// The limit on processes does not bind the superuser; a filter of system calls does.
bool forbidSystemCalls()
{
    if (architecture == 0)
        return true;
    constexpr std::uint32_t refused = SECCOMP_RET_ERRNO | EPERM;
    std::array<sock_filter, forbidden.size() + 6> program{};
    auto const jump = [](std::uint32_t value, std::size_t ifEqual, std::size_t otherwise) {
        return sock_filter{BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint8_t>(ifEqual),
                           static_cast<std::uint8_t>(otherwise), value};
    };
    auto const load = [](std::size_t offset) {
        return sock_filter{BPF_LD | BPF_W | BPF_ABS, 0, 0, static_cast<std::uint32_t>(offset)};
    };
    std::size_t at = 0;
    program[at++] = load(offsetof(seccomp_data, arch));
    program[at++] = jump(architecture, 0, forbidden.size() + 2);
    program[at++] = load(offsetof(seccomp_data, nr));
    for (std::size_t i = 0; i < forbidden.size(); ++i)
        program[at++] = jump(static_cast<std::uint32_t>(forbidden[i]), forbidden.size() - i, 0);
    program[at++] = {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW};
    program[at++] = {BPF_RET | BPF_K, 0, 0, refused};
    sock_fprog const filter{static_cast<unsigned short>(at), program.data()};
    // Where the kernel has no filters, or forbids them in a container, the other limits must do.
    return ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0 || errno == EINVAL || errno == ENOSYS ||
           errno == EACCES;
}

} // namespace

bool takeOnLimits(ImportLimits const& limits, bool limitMemory)
{
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           (!limitMemory || limit(RLIMIT_AS, limits.memory, limits.memory)) &&
           limit(RLIMIT_CPU, limits.seconds, rlim_t{limits.seconds} + 1) && limit(RLIMIT_FSIZE, 0, 0) &&
           limit(RLIMIT_CORE, 0, 0) && limit(RLIMIT_NPROC, 0, 0) && forbidSystemCalls();
}

} // namespace sgview
